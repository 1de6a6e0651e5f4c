namespace Velmora.Bridge.Requests;

internal static unsafe class FileRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void AddFiles(long service, RequestArguments* arguments, Reply* reply) => Answers.Outcome(
        Arguments.Service(service).AddFiles(Arguments.Folder(arguments), Arguments.Strings(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void CanAddFiles(long service, RequestArguments* arguments, Reply* reply) => Answers.Flag(
        Arguments.Service(service).CanAddFiles(Arguments.Folder(arguments), Arguments.Strings(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void IsFileInWorkspace(long service, RequestArguments* arguments, Reply* reply)
    {
        string key = Arguments.String(arguments);
        Dictionary<string, bool> answers = Arguments.Service(service).AreFilesInWorkspace(new List<string> { key });
        Answers.Flag(answers.TryGetValue(key, out bool known) && known, reply);
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void SyncFiles(long service, RequestArguments* arguments, Reply* reply) => Answers.Outcome(
        Arguments.Service(service).SyncFiles(Arguments.Ids(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void DeleteItems(long service, RequestArguments* arguments, Reply* reply) => Answers.Outcome(
        Arguments.Service(service).DeleteItems(Arguments.Ids(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void FileClosedWithinRunningProcess(long service, RequestArguments* arguments) =>
        Arguments.Service(service).FileClosedWithinRunningProcess((int)arguments->Number, Arguments.String(arguments));
}
