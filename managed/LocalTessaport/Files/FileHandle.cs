namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads and sets properties of open files.</summary>
internal static class FileHandle
{
    private const long SmallestWithHoles = 64 * 1024;
    private const long SmallestToClone = 64 * 1024;

    public static FileEntry EntryOf(SafeFileHandle handle, string path) =>
        OperatingSystem.IsWindows() ? WindowsFile.EntryOf(handle, path) : UnixFile.EntryOf(handle, path);

    /// <summary>
    /// Gives a finished copy the time and, as far as they are meant to be copied, the permissions of its source.
    /// </summary>
    public static void Finish(SafeFileHandle handle, string path, FileEntry source)
    {
        if (OperatingSystem.IsWindows())
            WindowsFile.SetModified(handle, path, source.ModifiedTime);
        else
            UnixFile.Finish(handle, path, source);
    }

    /// <summary>
    /// The next range of a file at or after an offset that is not a hole; an empty range at the end if only a hole follows.
    /// </summary>
    public static (long Start, long End) NextData(OpenedFile file, long from) =>
        OperatingSystem.IsWindows() || file.Entry.Size < SmallestWithHoles ? (from, file.Entry.Size) : UnixFile.NextData(file, from);

    /// <summary>Whether a part of a file takes no room on the disk; false where the system does not say.</summary>
    public static bool HasHole(SafeFileHandle handle, long size) => !OperatingSystem.IsWindows() && UnixFile.HasHole(handle, size);

    /// <summary>Makes an empty file share the content of another; false if the file system cannot.</summary>
    public static bool TryClone(OpenedFile file, SafeFileHandle target) =>
        !OperatingSystem.IsWindows() && file.Entry.Size >= SmallestToClone && UnixFile.TryClone(file.Handle, target);

    /// <summary>Flushes all files of a file system to the disk; false if the system cannot report failures of it.</summary>
    public static bool TryFlushFileSystem(SafeFileHandle handle) => !OperatingSystem.IsWindows() && UnixFile.TryFlushFileSystem(handle);

    /// <summary>Flushes the content and attributes of a file to the disk.</summary>
    public static void Flush(SafeFileHandle handle, string path)
    {
        if (OperatingSystem.IsWindows())
            RandomAccess.FlushToDisk(handle);
        else
            UnixFile.Flush(handle, path);
    }

    public static int Read(SafeFileHandle handle, Span<byte> block, long offset, string path)
    {
        try
        {
            return RandomAccess.Read(handle, block, offset);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            throw Failure(e, path, "read");
        }
    }

    public static void Write(SafeFileHandle handle, ReadOnlySpan<byte> block, long offset, string path)
    {
        try
        {
            RandomAccess.Write(handle, block, offset);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            throw Failure(e, path, "written");
        }
    }

    // .NET does not know the path of a file that it has not opened itself.
    private static Exception Failure(Exception thrown, string path, string action) => OperatingSystem.IsWindows()
        ? WindowsFailure.For(thrown.HResult & 0xFFFF, path, action)
        : UnixFailure.For((UnixError)(thrown.InnerException ?? thrown).HResult, path, action);
}
