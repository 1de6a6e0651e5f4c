using System.Diagnostics;
using System.Reflection;

namespace Velmora.Bridge.Loading;

/// <summary>
/// Explains the runtime's exception for a member that the sync application's assembly lacks. The same exception thrown
/// by the sync application itself keeps its message.
/// </summary>
internal static class MissingMember
{
    public static string? Explain(Exception e)
    {
        if (e is not (MissingMemberException or TypeLoadException) || !RaisedByBridge(e))
            return null;
        Assembly? assembly = ApiAssembly.Bound;
        string found = assembly == null ? ApiAssembly.FileName : $"{assembly.Location} (version {assembly.GetName().Version})";
        return $"{found} lacks what this library calls: {e.Message} "
            + "Install a version of the sync application that offers it, or a version of this library that was built for the installed one.";
    }

    private static bool RaisedByBridge(Exception e)
    {
        MethodBase? origin = new StackTrace(e).GetFrame(0)?.GetMethod();
        return origin?.DeclaringType?.Assembly == typeof(MissingMember).Assembly;
    }
}
