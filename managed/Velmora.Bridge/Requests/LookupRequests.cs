using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

internal static unsafe class LookupRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetItemsByWorkspacePaths(long service, NativeText* paths, ulong count, Reply* reply) => Answers.List(
        Arguments.Service(service).GetItemsByWorkspacePaths(NativeText.CopyList(paths, count)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetItemsByRelativePaths(long service, byte* driveId, NativeText* paths, ulong count, Reply* reply) =>
        Answers.Items(
            Arguments.Service(service).GetItemsByRelativePaths(Arguments.Guid(driveId), NativeText.CopyList(paths, count)),
            reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetPermanentIds(long service, long* ids, ulong count, Reply* reply) => Answers.OptionalList(
        Arguments.Service(service).GetPermanentIds(Arguments.Ids(ids, count)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetItemsByPermanentIds(long service, NativeText* permanentIds, ulong count, Reply* reply) =>
        Answers.OptionalList(
            Arguments.Service(service).GetItemsByPermanentIds(NativeText.CopyList(permanentIds, count)), RecordWriter.Write,
            reply);
}
