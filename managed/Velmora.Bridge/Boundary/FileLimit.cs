using Microsoft.Win32.SafeHandles;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// Explains failures that come from the limit on open files of a process. The runtime reports an assembly that it cannot
/// open as one that does not exist, and never looks for it again.
/// </summary>
internal static class FileLimit
{
    // What failed has closed its own files by now, and left the process with that many.
    private const int Few = 8;

    private static bool _wasReached;

    /// <summary>The message for such a failure; null for any other.</summary>
    public static string? Explain(Exception e)
    {
        Exception cause = CauseOf(e);
        if (OperatingSystem.IsWindows() || !(cause is IOException || IsOfLoading(cause)))
            return null;
        if (IsReached())
        {
            _wasReached = true;
            return cause.Message.TrimEnd() + " This process has no file descriptors left, which can be the cause: close files or raise "
                + "the limit (ulimit -n), and restart the process if that does not help.";
        }
        return _wasReached && IsOfLoading(cause)
            ? cause.Message.TrimEnd() + " This process had no file descriptors left when it was loaded first, and .NET does not try "
                + "again: restart the process with a higher limit (ulimit -n)."
            : null;
    }

    private static Exception CauseOf(Exception e)
    {
        while (e is TypeInitializationException { InnerException: { } inner })
            e = inner;
        return e;
    }

    private static bool IsOfLoading(Exception e) =>
        e is FileNotFoundException or FileLoadException or TypeLoadException or BadImageFormatException;

    private static bool IsReached()
    {
        var opened = new SafeFileHandle?[Few];
        try
        {
            for (int i = 0; i < Few; ++i)
                opened[i] = File.OpenHandle("/dev/null");
            return false;
        }
        catch (IOException)
        {
            return true;
        }
        finally
        {
            foreach (SafeFileHandle? file in opened)
                file?.Dispose();
        }
    }
}
