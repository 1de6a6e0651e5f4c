namespace Velmora.Bridge.Requests;

internal static unsafe class CommandRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetCommands(long service, RequestArguments* arguments, Reply* reply) => Answers.List(
        Arguments.Service(service).GetCommands(Arguments.Context(arguments)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void ExecuteCommand(long service, RequestArguments* arguments, Reply* reply) => Answers.Outcome(
        Arguments.Service(service).ExecuteCommand(Arguments.Command(arguments), Arguments.Context(arguments)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetCommandImage(RequestArguments* arguments, Reply* reply) => Answers.One(
        Arguments.Command(arguments).Image, static (writer, image) => writer.WriteBytes(image), reply);
}
