namespace Velmora.Bridge.Conversions;

/// <summary>Arguments of the sync application's members, made from what crossed the boundary.</summary>
internal static unsafe class Arguments
{
    public static TessaportService Service(long handle) => (TessaportService)HandleTable.Get(handle)!;

    public static ItemId Folder(RequestArguments* arguments) => Id(arguments->Target);

    public static Command Command(RequestArguments* arguments) => (Command)HandleTable.Get(arguments->Target)!;

    public static List<ItemId> Ids(RequestArguments* arguments) => Ids(arguments->Handles, arguments->HandleCount);

    public static string String(RequestArguments* arguments) => arguments->Strings->ToString();

    public static List<string> Strings(RequestArguments* arguments)
    {
        var strings = new List<string>(checked((int)arguments->StringCount));
        for (ulong i = 0; i < arguments->StringCount; ++i)
            strings.Add(arguments->Strings[i].ToString());
        return strings;
    }

    public static Guid DriveId(RequestArguments* arguments) => new(new ReadOnlySpan<byte>(arguments->Identifier, 16), true);

    public static CommandContext Context(RequestArguments* arguments)
    {
        NativeContext* context = arguments->Context;
        return new CommandContext(context->Window, Id(context->Item), Ids(context->Items, context->ItemCount));
    }

    private static ItemId Id(long handle) => (ItemId)HandleTable.Get(handle)!;

    private static List<ItemId> Ids(long* handles, ulong count)
    {
        var ids = new List<ItemId>(checked((int)count));
        for (ulong i = 0; i < count; ++i)
            ids.Add(Id(handles[i]));
        return ids;
    }
}
