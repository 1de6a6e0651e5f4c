namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads and sets properties of open files.</summary>
internal static unsafe class UnixFile
{
    private const int PermissionBits = 0x1ff;
    private static readonly Version ReportsFailures = new(5, 8);

    private const int OwnerReadsAndWrites = 0x180;

    /// <summary>Takes ownership of a handle that was opened for reading; fails unless it is a file.</summary>
    public static OpenedFile Opened(SafeFileHandle handle, string path)
    {
        try
        {
            var entry = EntryOf(handle, path);
            if (entry.Kind != EntryKind.File)
                throw new IOException($"'{path}' is not a file.");
            RequireUnlocked(handle, path);
            return new OpenedFile(handle, path, entry);
        }
        catch
        {
            handle.Dispose();
            throw;
        }
    }

    // A program that holds an exclusive lock has not finished with the file. Our own lock is released at once, so that it blocks no one.
    private static void RequireUnlocked(SafeFileHandle handle, string path)
    {
        if (Libc.Lock(handle, Libc.LockShared | Libc.LockNonBlocking) == 0)
            Libc.Lock(handle, Libc.Unlock);
        else if (Libc.LastError == UnixError.TryAgain)
            throw new IOException($"'{path}' is locked by another program. Close it there and try again.");
    }

    public static FileEntry EntryOf(SafeFileHandle handle, string path)
    {
        if (Libc.Status(handle, "", Libc.EmptyPath, UnixStatus.BasicAndBirth, out var status) != 0)
            throw UnixFailure.Last(path, "examined");
        return status.ToEntry();
    }

    // The set-user, set-group and sticky bits are not copied: they would give rights to whoever runs the file.
    public static void Finish(SafeFileHandle handle, string path, FileEntry source)
    {
        if (Libc.SetMode(handle, (uint)((source.Mode & PermissionBits) | OwnerReadsAndWrites)) != 0)
            throw UnixFailure.Last(path, "given its permissions");
        var times = stackalloc TimeSpec[2];
        times[0].Nanoseconds = TimeSpec.Omit;
        times[1].Seconds = source.ModifiedTime.Seconds;
        times[1].Nanoseconds = source.ModifiedTime.Nanoseconds;
        if (Libc.SetTimes(handle, times) != 0)
            throw UnixFailure.Last(path, "given its time");
    }

    /// <summary>The entry at a full path, or at the target of its link; null if it does not exist.</summary>
    public static FileEntry? Find(string path, bool followLinks)
    {
        if (Libc.Status(Libc.CurrentFolder, path, followLinks ? 0 : Libc.StatusNoFollow, UnixStatus.BasicAndBirth, out var status) == 0)
            return status.ToEntry();
        return UnixFailure.MeansAbsent(Libc.LastError) ? null : throw UnixFailure.Last(path, "examined");
    }

    /// <summary>Opens a file by its full path; links are followed.</summary>
    public static OpenedFile Open(string path)
    {
        // Checked before opening: opening a pipe would wake its writer, and opening a device can have any effect.
        if (Find(path, followLinks: true) is not { Kind: EntryKind.File })
            throw new FileNotFoundException($"'{path}' does not exist or is not a file.", path);
        return Opened(OpenWithoutWaiting(path), path);
    }

    /// <summary>Opens whatever has a full path for reading; a pipe too is opened at once.</summary>
    public static SafeFileHandle OpenWithoutWaiting(string path)
    {
        var descriptor = Libc.Open(path, Libc.OpenReadOnly | Libc.OpenNonBlocking | Libc.OpenCloseOnExec, 0);
        return descriptor >= 0 ? new SafeFileHandle(descriptor, ownsHandle: true) : throw UnixFailure.Last(path, "opened");
    }

    // .NET does not report that fsync() failed, after which the content may never reach the disk.
    public static void Flush(SafeFileHandle file, string path)
    {
        while (Libc.Flush(file) != 0)
        {
            var error = Libc.LastError;
            // The file system has nothing to flush.
            if (error is UnixError.InvalidArgument or UnixError.NotSupported or UnixError.ReadOnlyFileSystem)
                return;
            if (error != UnixError.Interrupted)
                throw UnixFailure.For(error, path, "flushed to the disk");
        }
    }

    // syncfs() reports write errors only since Linux 5.8.
    public static bool TryFlushFileSystem(SafeFileHandle file) =>
        OperatingSystem.IsLinux() && Environment.OSVersion.Version >= ReportsFailures && Libc.FlushFileSystem(file) == 0;

    public static bool TryClone(SafeFileHandle file, SafeFileHandle target) =>
        (UnixPath.Missing & UnixFeatures.Cloning) == 0 && Libc.Control(target, Libc.CloneFile, file) == 0;

    public static bool HasHole(SafeFileHandle handle, long size) => Libc.Seek(handle, 0, Libc.SeekHole) is var hole and >= 0 && hole < size;

    public static (long Start, long End) NextData(OpenedFile file, long from)
    {
        var size = file.Entry.Size;
        var start = Libc.Seek(file.Handle, from, Libc.SeekData);
        if (start < 0)
            return Libc.LastError == UnixError.NoSuchAddress ? (size, size) : (from, size);
        var end = Libc.Seek(file.Handle, start, Libc.SeekHole);
        return (Math.Min(start, size), end < 0 ? size : Math.Min(end, size));
    }
}
