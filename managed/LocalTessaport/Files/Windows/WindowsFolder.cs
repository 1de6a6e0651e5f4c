namespace Quorvex.Tessaport.API.Local;

/// <summary>A folder held by a handle, through which everything in it is reached.</summary>
internal sealed class WindowsFolder : OpenFolder
{
    private const uint FolderAccess = NativeFile.ReadData | NativeFile.Traverse | NativeFile.ReadAttributes;
    private const int Attempts = 20;

    private readonly SafeFileHandle _handle;

    private WindowsFolder(SafeFileHandle handle, string path)
        : base(path) => _handle = handle;

    public static new WindowsFolder? TryOpenRoot(string path)
    {
        if (WindowsFile.Find(path, followLinks: false) is not { } entry)
            return null;
        if (!entry.IsFolder)
            throw new IOException($"'{path}' is not a folder. Correct the drive's folders and try again.");
        var handle = WindowsFile.OpenFolder(path);
        if (handle.IsInvalid)
            throw WindowsFailure.Last(path, "opened");
        return new WindowsFolder(handle, path);
    }

    public override OpenFolder? TryOpen(string relative)
    {
        var passed = this;
        foreach (var name in relative.Split('\\'))
        {
            var opened = passed.TryOpenOne(name);
            if (passed != this)
                passed.Dispose();
            if (opened is null)
                return null;
            passed = opened;
        }
        return passed;
    }

    public override FileEntry? Find(string name) => Examine(name, WindowsFile.EntryOf);

    public override List<NamedEntry> Read(IEntryFilter? filter)
    {
        var found = List(pattern: null, filter);
        found.RemoveAll(item => item.Entry.Kind == EntryKind.Other || !NameRules.CanBeListed(item.Name));
        return found;
    }

    public override string SpellingOf(string name)
    {
        foreach (var (found, _) in List(name))
        {
            if (found.Equals(name, RelativePath.Comparison))
                return found;
        }
        return name;
    }

    public override DateTime? CreationTimeOf(string name) => Examine(name, WindowsFile.CreationTimeOf);

    public override OpenedFile OpenFile(string name)
    {
        var path = PathOf(name);
        using var pinned = OpenItem(name, NativeFile.ReadAttributes, 0, "opened");
        if (WindowsFile.EntryOf(pinned, path).Kind != EntryKind.File)
            throw new IOException($"'{path}' is not a file.");
        Step.Reached("Open.Examined", path);
        return WindowsFile.Opened(OpenItem(name, NativeFile.ReadData | NativeFile.ReadAttributes, NativeFile.FileOnly, "opened"), path);
    }

    public override SafeFileHandle CreateFile(string name)
    {
        const uint access = NativeFile.ReadData | NativeFile.WriteData | NativeFile.ReadAttributes | NativeFile.WriteAttributes;
        var status = NativeFile.Open(_handle, name, access, share: 0, NativeFile.CreateNew,
            NativeFile.FileOnly | NativeFile.OpenLinkItself, NativeFile.Normal, out var handle);
        return status == WindowsStatus.Success ? handle : throw WindowsFailure.For(status, PathOf(name), "created");
    }

    public override SafeFileHandle OpenToFlush(string name) =>
        OpenItem(name, NativeFile.ReadData | NativeFile.WriteData | NativeFile.ReadAttributes, NativeFile.FileOnly, "opened");

    public override bool MakeFolder(string name, FileEntry? like)
    {
        var attributes = name == Staging.FolderName ? NativeFile.Hidden : NativeFile.Normal;
        var status = NativeFile.Open(_handle, name, NativeFile.ReadAttributes, NativeFile.ShareAll, NativeFile.CreateNew,
            NativeFile.FolderOnly | NativeFile.OpenLinkItself, attributes, out var handle);
        handle.Dispose();
        if (status == WindowsStatus.Success)
            return true;
        if (status == WindowsStatus.NameCollision && Find(name) is { } entry)
            return entry.IsFolder ? false : throw new IOException(
                $"'{PathOf(name)}' cannot be created as a folder: something else has that name. Rename that and try again.");
        throw WindowsFailure.For(status, PathOf(name), "created");
    }

    public override void Move(string name, OpenFolder to, string newName)
    {
        var target = (WindowsFolder)to;
        for (var attempt = 1; ; ++attempt)
        {
            using var item = OpenItem(name, NativeFile.Delete | NativeFile.ReadAttributes, 0, "renamed");
            var status = NativeFile.Rename(item, target._handle, newName);
            if (status == WindowsStatus.Success)
                return;
            if (status == WindowsStatus.NameCollision)
                throw new ChangedException(target.PathOf(newName));
            // A scanner or a reader has the file open for a moment.
            if (status is not (WindowsStatus.SharingViolation or WindowsStatus.AccessDenied) || attempt == Attempts)
                throw WindowsFailure.For(status, PathOf(name), $"renamed to '{target.PathOf(newName)}'");
            Thread.Sleep(10);
        }
    }

    // Windows cannot exchange two files.
    public override bool TryExchange(string name, OpenFolder other, string otherName) => false;

    public override WriteGuard Guard(string name, FileEntry expected)
    {
        var path = PathOf(name);
        var status = NativeFile.Open(_handle, name, NativeFile.ReadData | NativeFile.ReadAttributes,
            NativeFile.ShareRead | NativeFile.ShareDelete, NativeFile.OpenExisting, NativeFile.OpenLinkItself, 0, out var handle);
        if (status == WindowsStatus.SharingViolation)
            throw ChangedException.InUse(path);
        if (status != WindowsStatus.Success)
            throw WindowsFailure.MeansAbsent(status) ? new ChangedException(path) : WindowsFailure.For(status, path, "opened");
        Step.Reached("Guard.Taken", path);
        if (WindowsFile.EntryOf(handle, path).IsUnchangedSince(expected))
            return new WindowsWriteGuard(handle);
        handle.Dispose();
        throw new ChangedException(path);
    }

    public override bool Empty() => WindowsTree.Empty(this);

    public override void TryDelete(string name)
    {
        try
        {
            using var item = TryOpenItem(name, NativeFile.Delete | NativeFile.WriteAttributes, 0, "deleted");
            if (item is not null)
                NativeFile.Remove(item);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    public override void RemoveFolder(string name)
    {
        using var item = OpenItem(name, NativeFile.Delete | NativeFile.WriteAttributes, NativeFile.FolderOnly, "deleted");
        var status = NativeFile.Remove(item);
        if (status != WindowsStatus.Success)
            throw WindowsFailure.For(status, PathOf(name), "deleted");
    }

    /// <summary>All entries of the folder, links included, or those that match a name.</summary>
    public List<NamedEntry> List(string? pattern = null, IEntryFilter? filter = null)
    {
        var volume = WindowsFile.EntryOf(_handle, Path).Device;
        var status = NativeFile.Open(_handle, "", FolderAccess, NativeFile.ShareAll, NativeFile.OpenExisting,
            NativeFile.FolderOnly | NativeFile.OpenLinkItself, 0, out var handle);
        using (handle)
        {
            return status == WindowsStatus.Success
                ? WindowsFolderList.Read(handle, Path, volume, pattern, filter)
                : throw WindowsFailure.For(status, Path, "listed");
        }
    }

    public override void Dispose()
    {
        base.Dispose();
        _handle.Dispose();
    }

    private T? Examine<T>(string name, Func<SafeFileHandle, string, T> read)
        where T : struct
    {
        if (name.Length == 0)
            return read(_handle, Path);
        using var item = TryOpenItem(name, NativeFile.ReadAttributes, 0, "examined");
        return item is null ? null : read(item, PathOf(name));
    }

    private WindowsFolder? TryOpenOne(string name)
    {
        var item = TryOpenItem(name, FolderAccess, NativeFile.FolderOnly, "opened");
        if (item is null)
            return null;
        var folder = new WindowsFolder(item, PathOf(name));
        try
        {
            if (folder.Find("") is { IsFolder: true })
                return folder;
        }
        catch
        {
            folder.Dispose();
            throw;
        }
        folder.Dispose();
        return null;
    }

    private SafeFileHandle OpenItem(string name, uint access, uint options, string action) =>
        TryOpenItem(name, access, options, action) ?? throw new FileNotFoundException($"'{PathOf(name)}' does not exist.", PathOf(name));

    // A colon would name a stream of a file instead of a file.
    private SafeFileHandle? TryOpenItem(string name, uint access, uint options, string action)
    {
        if (name.Contains(':'))
            return null;
        var status = NativeFile.Open(_handle, name, access, NativeFile.ShareAll, NativeFile.OpenExisting,
            options | NativeFile.OpenLinkItself, 0, out var handle);
        if (status == WindowsStatus.Success)
            return handle;
        handle.Dispose();
        return WindowsFailure.MeansAbsent(status) ? null : throw WindowsFailure.For(status, PathOf(name), action);
    }
}

/// <summary>An open handle that is not shared for writing.</summary>
internal sealed class WindowsWriteGuard : WriteGuard
{
    private readonly SafeFileHandle _handle;

    public WindowsWriteGuard(SafeFileHandle handle) => _handle = handle;

    public override bool Holds => true;

    public override void Dispose() => _handle.Dispose();
}
