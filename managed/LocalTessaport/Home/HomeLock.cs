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

    public static HomeLock Acquire(HomeFolder home)
    {
        var waited = Stopwatch.StartNew();
        for (var pause = 1; ; pause = Math.Min(2 * pause, 50))
        {
            if (TryAcquire(home) is { } held)
                return held;
            if (waited.Elapsed > LongestWait)
                throw new IOException(
                    $"Another process has been changing files for {LongestWait.TotalMinutes} minutes and holds '{home.LockFile}'. "
                    + "Wait for it or end it, then try again.");
            Thread.Sleep(pause);
        }
    }

    /// <summary>Takes the lock if no one holds it; otherwise returns null at once.</summary>
    public static HomeLock? TryAcquire(HomeFolder home)
    {
        if (TryOpen(home.LockFile) is not { } file)
            return null;
        try
        {
            // Off Windows, .NET leaves out its own lock when DOTNET_SYSTEM_IO_DISABLEFILELOCKING is set.
            if (OperatingSystem.IsWindows() || FileLock.TryTake(file.SafeFileHandle, home.LockFile))
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
        try
        {
            return new FileStream(path, FileMode.OpenOrCreate, FileAccess.ReadWrite, FileShare.None, bufferSize: 1);
        }
        catch (IOException e) when (IsHeldByAnother(e))
        {
            return null;
        }
        catch (UnauthorizedAccessException) when (Directory.Exists(path))
        {
            throw new IOException($"'{path}' is a folder and not the lock file of the service. Remove it and try again.");
        }
    }

    private static bool IsHeldByAnother(IOException e)
    {
        const int windowsSharingViolation = unchecked((int)0x80070020);
        return e.HResult == (OperatingSystem.IsWindows() ? windowsSharingViolation : FileLock.WouldBlock);
    }
}
