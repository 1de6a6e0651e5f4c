namespace Velmora.Bridge.Requests;

internal static unsafe class PropertyRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetPropertyDefinitions(long service, RequestArguments* arguments, Reply* reply) => Answers.List(
        Arguments.Service(service).GetPropertyDefinitions(Arguments.DriveId(arguments)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetProperties(long service, RequestArguments* arguments, Reply* reply) => Answers.List(
        Arguments.Service(service).GetProperties(Arguments.Ids(arguments), Arguments.Strings(arguments)).Values,
        RecordWriter.Write, reply);
}
