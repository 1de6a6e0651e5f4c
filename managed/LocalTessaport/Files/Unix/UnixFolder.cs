namespace Quorvex.Tessaport.API.Local;

/// <summary>A folder held by a descriptor, through which everything in it is reached.</summary>
internal sealed class UnixFolder : OpenFolder
{
    private const uint PrivateFile = 0x180;
    private const uint AllRights = 0x1ff;
    private const uint OwnerRights = 0x1c0;

    private readonly SafeFileHandle _handle;

    private UnixFolder(SafeFileHandle handle, string path)
        : base(path) => _handle = handle;

    public static new UnixFolder? TryOpenRoot(string path)
    {
        if (UnixPath.TryOpenRoot(path, out var error) is { } handle)
            return new UnixFolder(handle, path);
        return error switch
        {
            UnixError.NoEntry => null,
            UnixError.TooManyLinks or UnixError.NotAFolder => throw new IOException(
                $"'{path}' cannot be opened: it is not a folder, or a link was put into its path. Restore it, or correct the drive's folders."),
            _ => throw UnixFailure.For(error, path, "opened"),
        };
    }

    public override OpenFolder? TryOpen(string relative)
    {
        var handle = UnixPath.TryOpen(_handle, PathForm.ToPlatform(relative), Libc.OpenPath | Libc.OpenFolder, out var error);
        if (handle is not null)
            return new UnixFolder(handle, PathOf(relative));
        return UnixFailure.MeansAbsent(error) || error == UnixError.TooManyLinks ? null : throw UnixFailure.For(error, PathOf(relative), "opened");
    }

    public override FileEntry? Find(string name) => Examine(name) is { } status ? status.ToEntry() : null;

    public override List<NamedEntry> Read(IEntryFilter? filter)
    {
        var found = new List<NamedEntry>();
        using var list = new UnixFolderList(_handle, Path);
        Span<char> buffer = stackalloc char[UnixFolderList.LongestName];
        while (list.MoveNext())
        {
            if (list.TryReadName(buffer, out var name) && NameRules.CanBeListed(name) && list.TryExamine(out var entry)
                && entry.Kind != EntryKind.Other && filter?.LeavesOut(name, entry) is not true)
                found.Add(new(name.ToString(), entry));
        }
        return found;
    }

    public override string SpellingOf(string name) => name;

    public override DateTime? CreationTimeOf(string name) => Examine(name) is { } status ? status.Created.ToDateTime() : null;

    public override OpenedFile OpenFile(string name)
    {
        var path = PathOf(name);
        // Checked before opening: opening a pipe would wake its writer, and opening a device can have any effect.
        RequireFile(Find(name), path);
        Step.Reached("Open.Examined", path);
        var handle = UnixPath.TryOpen(_handle, name, Libc.OpenReadOnly | Libc.OpenNonBlocking, out var error)
            ?? throw UnixFailure.For(error, path, "opened");
        return UnixFile.Opened(handle, path);
    }

    public override SafeFileHandle CreateFile(string name)
    {
        var flags = Libc.OpenReadWrite | Libc.OpenCreate | Libc.OpenExclusive | Libc.OpenNoFollow | Libc.OpenCloseOnExec;
        var descriptor = Libc.Open(_handle, name, flags, PrivateFile);
        return descriptor >= 0
            ? new SafeFileHandle(descriptor, ownsHandle: true)
            : throw UnixFailure.Last(PathOf(name), "created");
    }

    public override SafeFileHandle OpenToFlush(string name) => UnixPath.TryOpen(
        _handle, name, Libc.OpenReadOnly | Libc.OpenNonBlocking, out var error)
        ?? throw UnixFailure.For(error, PathOf(name), "opened");

    public override bool TryFlush(string name)
    {
        // Looked at first: opening a pipe would wake its writer, and opening a device can have any effect.
        if (Find(name) is not { Kind: not EntryKind.Other })
            return true;
        using var item = UnixPath.TryOpen(_handle, name, Libc.OpenReadOnly | Libc.OpenNonBlocking, out var error);
        if (item is null)
            return UnixFailure.MeansAbsent(error);
        UnixFile.Flush(item, PathOf(name));
        return true;
    }

    public override bool TryFlushNames()
    {
        using var folder = OpenFileSystem();
        if (folder is null)
            return false;
        UnixFile.Flush(folder, Path);
        return true;
    }

    public override SafeFileHandle? OpenFileSystem() => UnixPath.TryOpen(_handle, ".", Libc.OpenReadOnly | Libc.OpenFolder, out _);

    public override bool MakeFolder(string name, FileEntry? like) =>
        MakeFolder(name, like is { } other ? ((uint)other.Mode & AllRights) | OwnerRights : AllRights);

    public override bool MakeOwnFolder(string name) => MakeFolder(
        name, (UnixPath.Missing & UnixFeatures.MarkedFolders) == 0 ? UnixOwnFolder.Mode : OwnerRights);

    public override void RequireOwn() => UnixOwnFolder.Require(this, _handle);

    private bool MakeFolder(string name, uint mode)
    {
        if (Libc.MakeFolder(_handle, name, mode) == 0)
            return true;
        if (Libc.LastError == UnixError.Exists && Find(name) is { } entry)
            return entry.IsFolder ? false : throw new IOException(
                $"'{PathOf(name)}' cannot be created as a folder: something else has that name. Rename that and try again.");
        throw UnixFailure.Last(PathOf(name), "created");
    }

    public override void Move(string name, OpenFolder to, string newName)
    {
        var target = (UnixFolder)to;
        var error = UnixRename.WithoutReplacing(_handle, name, target._handle, newName);
        if (error is UnixError.Exists or UnixError.NotEmpty)
            throw new ChangedException(target.PathOf(newName));
        if (error != UnixError.None)
            throw UnixFailure.For(error, PathOf(name), $"renamed to '{target.PathOf(newName)}'");
    }

    public override bool TryExchange(string name, OpenFolder other, string otherName)
    {
        var target = (UnixFolder)other;
        var error = UnixRename.Exchange(_handle, name, target._handle, otherName);
        if (error == UnixError.None)
            return true;
        if (error == UnixError.NoEntry)
            throw new ChangedException(target.PathOf(otherName));
        return UnixRename.MeansMissing(error) ? false : throw UnixFailure.For(error, target.PathOf(otherName), "replaced");
    }

    public override WriteGuard Guard(string name, FileEntry expected) => UnixWriteGuard.Take(this, name, PathOf(name), expected);

    public override bool Empty() => UnixTree.Empty(_handle, Path);

    public override void TryDelete(string name) => Libc.Remove(_handle, name, 0);

    public override void RemoveFolder(string name)
    {
        if (Libc.Remove(_handle, name, Libc.RemoveFolder) != 0)
            throw UnixFailure.Last(PathOf(name), "deleted");
    }

    public override void Dispose()
    {
        base.Dispose();
        _handle.Dispose();
    }

    private UnixStatus? Examine(string name)
    {
        if (Libc.Status(_handle, name, Libc.StatusNoFollow | Libc.EmptyPath, UnixStatus.BasicAndBirth, out var status) == 0)
            return status;
        return UnixFailure.MeansAbsent(Libc.LastError) ? null : throw UnixFailure.Last(PathOf(name), "examined");
    }

    private static void RequireFile(FileEntry? entry, string path)
    {
        if (entry is null)
            throw UnixFailure.For(UnixError.NoEntry, path, "opened");
        if (entry is not { Kind: EntryKind.File })
            throw new IOException($"'{path}' is not a file.");
    }
}
