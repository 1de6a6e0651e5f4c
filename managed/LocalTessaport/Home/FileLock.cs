namespace Quorvex.Tessaport.API.Local;

/// <summary>The lock that Unix systems keep on an open file, and that every process sees.</summary>
internal static class FileLock
{
    /// <summary>The error number of a lock that another open file holds.</summary>
    public const int WouldBlock = (int)UnixError.TryAgain;

    /// <summary>Returns false if another open file holds the lock; any other failure is thrown.</summary>
    public static bool TryTake(SafeHandle file, string path)
    {
        if (Libc.Lock(file, Libc.LockExclusive | Libc.LockNonBlocking) == 0)
            return true;
        var error = Libc.LastError;
        if (error == UnixError.TryAgain)
            return false;
        throw new IOException(
            $"'{path}' cannot be locked: {Marshal.GetPInvokeErrorMessage((int)error)}. Put the home on a file system that supports locks.");
    }

    public static void Release(SafeHandle file) => _ = Libc.Lock(file, Libc.Unlock);
}
