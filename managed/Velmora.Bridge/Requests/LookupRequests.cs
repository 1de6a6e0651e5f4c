namespace Velmora.Bridge.Requests;

internal static unsafe class LookupRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetItemsByWorkspacePaths(long service, RequestArguments* arguments, Reply* reply) => Answers.List(
        Arguments.Service(service).GetItemsByWorkspacePaths(Arguments.Strings(arguments)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetItemsByRelativePaths(long service, RequestArguments* arguments, Reply* reply) => Answers.Items(
        Arguments.Service(service).GetItemsByRelativePaths(Arguments.DriveId(arguments), Arguments.Strings(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetPermanentIds(long service, RequestArguments* arguments, Reply* reply) => Answers.OptionalList(
        Arguments.Service(service).GetPermanentIds(Arguments.Ids(arguments)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetItemsByPermanentIds(long service, RequestArguments* arguments, Reply* reply) => Answers.OptionalList(
        Arguments.Service(service).GetItemsByPermanentIds(Arguments.Strings(arguments)), RecordWriter.Write, reply);
}
