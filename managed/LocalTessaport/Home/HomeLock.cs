using System.Diagnostics;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Held while something in the home or its drives is changed. The operating system releases it when the process ends.
/// </summary>
internal sealed class HomeLock : IDisposable
{
    private static readonly TimeSpan LongestWait = TimeSpan.FromMinutes(2);

    private readonly FileStream _file;

    private HomeLock(FileStream file) => _file = file;

    public void Dispose()
    {
        // A child process that has not started its program yet has a copy of the descriptor, which would hold the lock.
        if (!OperatingSystem.IsWindows())
            FileLock.Release(_file.SafeFileHandle);
        _file.Dispose();
    }

    public static HomeLock Acquire(HomeFolder home) => Acquire(home.LockFile);

    /// <summary>
    /// Waits for the lock of the state file, which is held for a moment while the file is changed, here or by the tool. It can be
    /// taken while another request holds the home's own lock for minutes.
    /// </summary>
    public static HomeLock AcquireServiceFile(HomeFolder home) => Acquire(home.ServiceLockFile);

    /// <summary>Takes the lock if no one holds it; otherwise returns null at once.</summary>
    public static HomeLock? TryAcquire(HomeFolder home) => TryAcquire(home.LockFile);

    private static HomeLock Acquire(string path)
    {
        var waited = Stopwatch.StartNew();
        for (var pause = 1; ; pause = Math.Min(2 * pause, 50))
        {
            if (TryAcquire(path) is { } held)
                return held;
            if (waited.Elapsed > LongestWait)
                throw new IOException(
                    $"Another process has been changing files for {LongestWait.TotalMinutes} minutes and holds '{path}'. "
                    + "Wait for it or end it, then try again.");
            Thread.Sleep(pause);
        }
    }

    private static HomeLock? TryAcquire(string path)
    {
        if (TryOpen(path) is not { } file)
            return null;
        try
        {
            // Off Windows, .NET leaves out its own lock when DOTNET_SYSTEM_IO_DISABLEFILELOCKING is set.
            if (OperatingSystem.IsWindows() || FileLock.TryTake(file.SafeFileHandle, path))
                return new HomeLock(file);
        }
        catch
        {
            file.Dispose();
            throw;
        }
        file.Dispose();
        return null;
    }

    private static FileStream? TryOpen(string path)
    {
        HomeFile.RequireFileOrNothing(path);
        try
        {
            return new FileStream(path, FileMode.OpenOrCreate, FileAccess.ReadWrite, FileShare.None, bufferSize: 1);
        }
        catch (IOException e) when (IsHeldByAnother(e))
        {
            return null;
        }
    }

    private static bool IsHeldByAnother(IOException e)
    {
        const int windowsSharingViolation = unchecked((int)0x80070020);
        return e.HResult == (OperatingSystem.IsWindows() ? windowsSharingViolation : FileLock.WouldBlock);
    }
}
