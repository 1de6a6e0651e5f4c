namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads and sets properties of open files.</summary>
internal static class WindowsFile
{
    private const uint OpenExisting = 3;
    private const uint BackupSemantics = 0x02000000;
    private const uint OpenLinkItself = 0x00200000;
    private const uint GenericRead = 0x80000000;
    private const int FileNotFound = 2;
    private const int PathNotFound = 3;
    private const int InvalidName = 123;

    public static FileEntry EntryOf(SafeFileHandle handle, string path)
    {
        if (!NativeFile.Inform(handle, out var information))
            throw WindowsFailure.Last(path, "examined");
        var tag = (information.Attributes & NativeFile.Reparse) != 0 ? NativeFile.TagOf(handle) : 0;
        return information.ToEntry(NativeFile.ChangeTimeOf(handle), tag);
    }

    public static DateTime CreationTimeOf(SafeFileHandle handle, string path) => NativeFile.Inform(handle, out var information)
        ? DateTime.FromFileTimeUtc(Math.Max(information.Created, 0))
        : throw WindowsFailure.Last(path, "examined");

    public static void SetModified(SafeFileHandle handle, string path, FileTime time)
    {
        var status = NativeFile.SetModified(handle, Math.Max(time.ToDateTime().Ticks - DateTime.FromFileTimeUtc(0).Ticks, 1));
        if (status != WindowsStatus.Success)
            throw WindowsFailure.For(status, path, "given its time");
    }

    /// <summary>The entry at a full path, or at the target of its link; null if it does not exist.</summary>
    public static FileEntry? Find(string path, bool followLinks)
    {
        using var handle = OpenPath(path, NativeFile.ReadAttributes, BackupSemantics | (followLinks ? 0 : OpenLinkItself));
        if (!handle.IsInvalid)
            return EntryOf(handle, path);
        return System.Runtime.InteropServices.Marshal.GetLastPInvokeError() is FileNotFound or PathNotFound or InvalidName
            ? null
            : throw WindowsFailure.Last(path, "examined");
    }

    /// <summary>Opens a file by its full path; links are followed.</summary>
    public static OpenedFile Open(string path)
    {
        var handle = OpenPath(path, GenericRead, flags: 0);
        return handle.IsInvalid ? throw WindowsFailure.Last(path, "opened") : Opened(handle, path);
    }

    /// <summary>Takes ownership of a handle that was opened for reading; fails unless it is a file.</summary>
    public static OpenedFile Opened(SafeFileHandle handle, string path)
    {
        try
        {
            var entry = EntryOf(handle, path);
            return entry.Kind == EntryKind.File ? new OpenedFile(handle, path, entry) : throw new IOException($"'{path}' is not a file.");
        }
        catch
        {
            handle.Dispose();
            throw;
        }
    }

    public static SafeFileHandle OpenFolder(string path)
    {
        const uint access = NativeFile.ReadData | NativeFile.Traverse | NativeFile.ReadAttributes | NativeFile.Synchronize;
        return OpenPath(path, access, BackupSemantics | OpenLinkItself);
    }

    private static SafeFileHandle OpenPath(string path, uint access, uint flags) =>
        NativeFile.OpenPath(PathForm.ToLiteral(path), access, NativeFile.ShareAll, 0, OpenExisting, flags, 0);
}
