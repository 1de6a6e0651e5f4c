using System;
using System.Diagnostics;
using System.IO;
using System.Threading;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Held while something in the home or its drives is changed. The operating system lets go of it when the process ends.</summary>
internal sealed class HomeLock : IDisposable
{
    private static readonly TimeSpan LongestWait = TimeSpan.FromMinutes(2);

    private readonly FileStream _file;

    private HomeLock(FileStream file) => _file = file;

    public void Dispose() => _file.Dispose();

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

    /// <summary>Takes the lock when nobody has it, else gives null at once.</summary>
    public static HomeLock? TryAcquire(HomeFolder home)
    {
        try
        {
            return new HomeLock(
                new FileStream(home.LockFile, FileMode.OpenOrCreate, FileAccess.ReadWrite, FileShare.None, bufferSize: 1));
        }
        catch (IOException e) when (IsHeldByAnother(e))
        {
            return null;
        }
    }

    private static bool IsHeldByAnother(IOException e)
    {
        const int windowsSharingViolation = unchecked((int)0x80070020);
        const int linuxWouldBlock = 11;
        const int otherUnixWouldBlock = 35;
        return e.HResult is windowsSharingViolation or linuxWouldBlock or otherUnixWouldBlock;
    }
}
