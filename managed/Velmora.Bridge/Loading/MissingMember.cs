using System;
using System.Diagnostics;
using System.Reflection;

namespace Velmora.Bridge.Loading;

/// <summary>
/// Explains the runtime's complaint that the sync application's assembly has not what this bridge was built for. The
/// same exception raised by the sync application for reasons of its own keeps its message.
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
