namespace Velmora.Bridge.Requests;

internal static unsafe class PathRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetFullPath(RequestArguments* arguments, Reply* reply) => Answers.One(
        Path.GetFullPath(Arguments.String(arguments)), static (writer, path) => writer.WriteString(path), reply);
}
