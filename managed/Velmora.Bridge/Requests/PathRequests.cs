using System.IO;
using Velmora.Bridge.Boundary;

namespace Velmora.Bridge.Requests;

internal static unsafe class PathRequests
{
    public static void GetFullPath(NativeText* path, Reply* reply) =>
        Answers.One(Path.GetFullPath(path->ToString()), static (writer, text) => writer.WriteText(text), reply);
}
