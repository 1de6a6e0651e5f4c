namespace Quorvex.Tessaport.API.Local;

/// <summary>The lock that Unix systems keep on an open file, and that every process sees.</summary>
internal static partial class FileLock
{
    private const int Exclusive = 2;
    private const int WithoutWaiting = 4;
    private const int Unlock = 8;

    /// <summary>The error number of a lock that another open file holds.</summary>
    public static int WouldBlock => OperatingSystem.IsLinux() ? 11 : 35;

    /// <summary>Returns false when another holds the lock; any other failure is thrown.</summary>
    public static bool TryTake(SafeHandle file, string path)
    {
        if (Call(file, Exclusive | WithoutWaiting) == 0)
            return true;
        var error = Marshal.GetLastPInvokeError();
        if (error == WouldBlock)
            return false;
        throw new IOException(
            $"'{path}' cannot be locked: {Marshal.GetPInvokeErrorMessage(error)}. Put the home on a file system that supports locks.");
    }

    public static void Release(SafeHandle file) => _ = Call(file, Unlock);

    [LibraryImport("libc", EntryPoint = "flock", SetLastError = true)]
    private static partial int Call(SafeHandle file, int operation);
}
