using System.ComponentModel;
using System.Diagnostics;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>A folder that is reached through a file system in user space, as a remote is: a loopback mount made by rclone.</summary>
internal sealed class MountedFolder : IDisposable
{
    private static readonly TimeSpan Patience = TimeSpan.FromMinutes(2);

    private readonly string _cache;
    private Process? _server;

    /// <param name="folder">Where its three folders are made.</param>
    public MountedFolder(string folder)
    {
        Remote = Path.Combine(folder, "remote");
        Point = Path.Combine(folder, "mount");
        _cache = Path.Combine(folder, "cache");
        Directory.CreateDirectory(Remote);
        Directory.CreateDirectory(Point);
    }

    /// <summary>What is mounted, as those see it who reach it by other means.</summary>
    public string Remote { get; }

    /// <summary>Where it is mounted.</summary>
    public string Point { get; }

    private bool IsMounted => File.ReadLines("/proc/self/mountinfo").Any(line => line.Split(' ')[4] == Point);

    public void Mount(params string[] options)
    {
        _server = Start(
            "rclone",
            [
                "mount", ":local:" + Remote, Point, "--config", "/dev/null", "--cache-dir", _cache, "--vfs-cache-mode", "writes",
                "--vfs-write-back", "0s", "--dir-cache-time", "0s", "--attr-timeout", "0s", .. options,
            ]);
        for (var watch = Stopwatch.StartNew(); !IsMounted; Thread.Sleep(10))
        {
            if (_server.HasExited || watch.Elapsed > Patience)
                throw new InvalidOperationException("rclone could not mount a folder; it needs fuse3 and access to /dev/fuse.");
        }
    }

    public void Unmount() => Unmount("-u");

    /// <summary>The server is gone in the middle of what it does; the mount stays and answers nothing.</summary>
    public void BreakOff()
    {
        _server!.Kill();
        Wait(_server);
    }

    /// <summary>Takes away what is left of a mount whose server is gone.</summary>
    public void Clear() => Unmount("-uz");

    public void Dispose()
    {
        // What is mounted must not be deleted with the folder of the test.
        if (IsMounted)
            Clear();
    }

    private void Unmount(string option)
    {
        using (var process = Start("fusermount3", option, Point))
            Wait(process);
        if (IsMounted)
            throw new InvalidOperationException($"'{Point}' could not be unmounted.");
        Wait(_server!);
        _server!.Dispose();
        _server = null;
    }

    private static Process Start(string program, params string[] arguments)
    {
        try
        {
            return Process.Start(program, arguments);
        }
        catch (Win32Exception e)
        {
            throw new InvalidOperationException($"This test needs {program} (rclone, fuse3): {e.Message}", e);
        }
    }

    private static void Wait(Process process)
    {
        if (!process.WaitForExit(Patience))
            throw new TimeoutException($"Process {process.Id} does not end.");
    }
}
