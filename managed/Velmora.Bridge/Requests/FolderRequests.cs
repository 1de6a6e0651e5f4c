namespace Velmora.Bridge.Requests;

internal static unsafe class FolderRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetChildFolders(long service, RequestArguments* arguments, Reply* reply) =>
        Answers.Items(Arguments.Service(service).GetChildFolders(Arguments.Folder(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetFolderContents(long service, RequestArguments* arguments, Reply* reply) =>
        Answers.Items(Arguments.Service(service).GetFolderContents(Arguments.Folder(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetOrCreateFolder(long service, RequestArguments* arguments, Reply* reply) => Answers.One(
        Arguments.Service(service).GetOrCreateFolder(Arguments.Folder(arguments), Arguments.String(arguments)),
        ItemWriter.WriteItem, reply);
}
