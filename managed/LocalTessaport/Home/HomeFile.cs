namespace Quorvex.Tessaport.API.Local;

/// <summary>Looks up the service's own files. Only what does not exist is absent; anything but a file in its place is an error.</summary>
internal static class HomeFile
{
    private const int BufferSize = 64 * 1024;

    /// <summary>The file, or the target of the link in its place; null if it does not exist.</summary>
    /// <exception cref="InvalidDataException">Something else is in its place; the message is the reason, without its name.</exception>
    public static FileEntry? Find(string path) => FileProbe.ExamineFollowingLinks(path) is { } found ? RequireFile(found) : null;

    /// <summary>
    /// Opens a file so that other programs can still replace it. Never waits: what has the name by now may be a pipe.
    /// </summary>
    /// <exception cref="InvalidDataException">Something else is in its place; the message is the reason, without its name.</exception>
    public static FileStream OpenForReading(string path)
    {
        Step.Reached("Home.Examined", path);
        if (OperatingSystem.IsWindows())
            return new(path, FileMode.Open, FileAccess.Read, FileShare.ReadWrite | FileShare.Delete, BufferSize);
        var handle = UnixFile.OpenWithoutWaiting(path);
        try
        {
            RequireFile(UnixFile.EntryOf(handle, path));
            return new(handle, FileAccess.Read, BufferSize);
        }
        catch
        {
            handle.Dispose();
            throw;
        }
    }

    /// <summary>Fails if something other than a file is at the path.</summary>
    public static void RequireFileOrNothing(string path)
    {
        try
        {
            Find(path);
        }
        catch (InvalidDataException e)
        {
            throw new IOException($"The service cannot use '{path}': {e.Message}. Remove it and try again.");
        }
    }

    private static FileEntry RequireFile(FileEntry entry) => entry switch
    {
        { Kind: EntryKind.File } => entry,
        { IsFolder: true } => throw new InvalidDataException("it is a folder and not a file"),
        _ => throw new InvalidDataException("it is a pipe, a socket or a device and not a file"),
    };
}
