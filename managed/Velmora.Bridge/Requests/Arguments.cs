using System;
using System.Collections.Generic;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;

namespace Velmora.Bridge.Requests;

/// <summary>Argument lists of the sync application, built from what crossed the boundary.</summary>
internal static unsafe class Arguments
{
    public static TessaportService Service(long handle) => (TessaportService)HandleTable.Get(handle)!;

    public static ItemId Id(long handle) => (ItemId)HandleTable.Get(handle)!;

    public static List<ItemId> Ids(long* handles, ulong count)
    {
        var ids = new List<ItemId>(checked((int)count));
        for (ulong i = 0; i < count; ++i)
            ids.Add(Id(handles[i]));
        return ids;
    }

    public static Guid Guid(byte* bytes) => new(new ReadOnlySpan<byte>(bytes, 16), true);

    public static CommandContext Context(NativeContext* context) =>
        new(context->Window, Id(context->Item), Ids(context->Items, context->ItemCount));
}
