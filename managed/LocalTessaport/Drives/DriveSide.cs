namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// One of the two folders of a drive. All access to the files in it goes through this class, relative to the open root, and
/// follows no link. Paths are relative to the root. Several threads may use it at once.
/// </summary>
internal sealed class DriveSide : IDisposable
{
    private const int MostNames = 1000;

    private readonly HeldFolders? _held;

    public DriveSide(string root)
        : this(root, held: null)
    {
    }

    private DriveSide(string root, HeldFolders? held)
    {
        Root = root;
        _held = held;
        // The root of a volume ends with its slash already.
        Prefix = Path.EndsInDirectorySeparator(root) ? root : root + Path.DirectorySeparatorChar;
    }

    /// <summary>In the platform's form.</summary>
    public string Root { get; }

    /// <summary>The common beginning of the paths of everything in it.</summary>
    public string Prefix { get; }

    /// <summary>The same side, with its root kept open until it is disposed, for requests with many accesses.</summary>
    public DriveSide Opened() => new(Root, new HeldFolders(Root));

    /// <summary>The full path in the platform's form, for messages and records; files are never opened by it.</summary>
    public string PathOf(string relative) => relative.Length == 0 ? Root : Prefix + PathForm.ToPlatform(relative);

    /// <summary>The file or folder at a path; null only if nothing is there, or a link or a device.</summary>
    public FileEntry? Find(string path) => FindAny(path) is { Kind: not EntryKind.Other } entry ? entry : null;

    /// <summary>The item at a path, links and devices included; null if nothing is there, or if a link is in the way.</summary>
    public FileEntry? FindAny(string path)
    {
        if (TryOpenFolder(RelativePath.FolderOf(path)) is not { } parent)
            return null;
        using (parent)
            return parent.Folder.Find(RelativePath.NameOf(path));
    }

    /// <summary>
    /// The files and folders directly in a folder, by name, in no particular order, without those that a filter leaves out; empty if
    /// the folder does not exist.
    /// </summary>
    public List<NamedEntry> Read(string folder, IEntryFilter? filter = null)
    {
        if (TryOpenFolder(folder) is not { } found)
            return [];
        using (found)
            return found.Folder.Read(filter);
    }

    /// <summary>A file, to be read or copied.</summary>
    public FileSource At(string path) => FileSource.On(this, path);

    public OpenedFile OpenFile(string path)
    {
        using var parent = OpenFolder(RelativePath.FolderOf(path));
        return parent.Folder.OpenFile(RelativePath.NameOf(path));
    }

    /// <summary>The creation time of an item; null if it does not exist.</summary>
    public DateTime? CreationTimeOf(string path)
    {
        if (TryOpenFolder(RelativePath.FolderOf(path)) is not { } parent)
            return null;
        using (parent)
            return parent.Folder.CreationTimeOf(RelativePath.NameOf(path));
    }

    /// <summary>The last name of a path as it is spelled on the disk, where case does not matter.</summary>
    public string SpellingOf(string path)
    {
        using var parent = OpenFolder(RelativePath.FolderOf(path));
        return parent.Folder.SpellingOf(RelativePath.NameOf(path));
    }

    /// <summary>
    /// Creates a folder in an existing one, with at most the rights of another folder; false if it exists already.
    /// </summary>
    public bool MakeFolder(string path, FileEntry? like = null)
    {
        using var parent = OpenFolder(RelativePath.FolderOf(path));
        return parent.Folder.MakeFolder(RelativePath.NameOf(path), like);
    }

    /// <summary>Renames or moves an item; never replaces anything.</summary>
    /// <exception cref="ChangedException">Something has the new path.</exception>
    public void Move(string from, string to)
    {
        using var source = OpenFolder(RelativePath.FolderOf(from));
        using var target = OpenFolder(RelativePath.FolderOf(to));
        source.Folder.Move(RelativePath.NameOf(from), target.Folder, RelativePath.NameOf(to));
    }

    /// <summary>
    /// Exchanges two items. Where the file system cannot do that in one step, the first one has another name for a moment,
    /// which it keeps if the process is killed then.
    /// </summary>
    /// <exception cref="ChangedException">Something else came to one of the places; nothing is lost.</exception>
    public void Exchange(string one, string other)
    {
        if (TryExchange(one, other))
            return;
        var aside = MoveBeside(one);
        Step.Reached("Exchange.Aside", aside);
        try
        {
            Move(other, one);
        }
        catch
        {
            Move(aside, one);
            throw;
        }
        Step.Reached("Exchange.Moved", one);
        Move(aside, other);
    }

    private bool TryExchange(string one, string other)
    {
        using var first = OpenFolder(RelativePath.FolderOf(one));
        using var second = OpenFolder(RelativePath.FolderOf(other));
        return first.Folder.TryExchange(RelativePath.NameOf(one), second.Folder, RelativePath.NameOf(other));
    }

    private string MoveBeside(string path)
    {
        for (var number = 1; ; ++number)
        {
            var beside = RelativePath.Join(
                RelativePath.FolderOf(path), NameRules.WithNote(RelativePath.NameOf(path), $" (changing places {number})"));
            try
            {
                Move(path, beside);
                return beside;
            }
            catch (ChangedException) when (number < MostNames)
            {
            }
        }
    }

    /// <summary>Moves an item out of sight in one step; it is deleted when the staging folder is cleared.</summary>
    /// <exception cref="ChangedException">The item is not the expected one; it is still there.</exception>
    public void MoveAside(string path, FileEntry expected)
    {
        using var parent = OpenFolder(RelativePath.FolderOf(path));
        using var staging = OpenStaging();
        Removal.MoveAside(parent.Folder, path, staging.Folder, expected);
    }

    /// <summary>The folder in which this thread prepares copies, created if it is missing.</summary>
    public FolderLease OpenCopies() => _held is not null ? new FolderLease(_held.Copies(), isOwned: false) : OpenStaging();

    /// <summary>Flushes all files of a file system that holds copies; false if that is not reliable.</summary>
    public bool TryFlushFileSystem(ulong device) => _held is not null && _held.TryFlushFileSystem(device);

    /// <summary>Flushes the file system of the root; false if that is not reliable.</summary>
    public bool TryFlushFileSystem()
    {
        if (_held is not null)
            return _held.TryFlushFileSystem();
        using var root = OpenFolder(RelativePath.Root);
        using var handle = root.Folder.OpenFileSystem();
        return handle is not null && FileHandle.TryFlushFileSystem(handle);
    }

    /// <summary>Flushes an item, or the names in a folder, if it exists; false if it cannot be opened.</summary>
    public bool TryFlush(string path)
    {
        if (path.Length == 0)
            return TryFlushNames(path);
        if (TryOpenFolder(RelativePath.FolderOf(path)) is not { } parent)
            return true;
        using (parent)
            return parent.Folder.TryFlush(RelativePath.NameOf(path));
    }

    /// <summary>Flushes the names in a folder, if it exists; false if it cannot be opened.</summary>
    public bool TryFlushNames(string folder)
    {
        if (TryOpenFolder(folder) is not { } found)
            return true;
        using (found)
            return found.Folder.TryFlushNames();
    }

    /// <summary>The staging folder, created if it is missing.</summary>
    private FolderLease OpenStaging()
    {
        if (_held is not null)
            return new FolderLease(_held.Staging(), isOwned: false);
        using var root = OpenFolder(RelativePath.Root);
        return new FolderLease(Staging.Open(root.Folder), isOwned: true);
    }

    public bool Exists()
    {
        if (TryOpenFolder(RelativePath.Root) is not { } root)
            return false;
        root.Dispose();
        return true;
    }

    /// <summary>Null if the root does not exist.</summary>
    public bool? HasStaging()
    {
        if (TryOpenFolder(RelativePath.Root) is not { } root)
            return null;
        using (root)
            return Staging.Exists(root.Folder);
    }

    /// <summary>
    /// Deletes what was being prepared and what was moved aside. Items that cannot be deleted now are harmless and are
    /// deleted later.
    /// </summary>
    /// <returns>Why the staging folder is left alone, if it is not the service's own; otherwise null.</returns>
    public string? ClearStaging()
    {
        _held?.CloseStaging();
        if (TryOpenFolder(RelativePath.Root) is not { } root)
            return null;
        using (root)
            return Staging.Clear(root.Folder);
    }

    /// <summary>Opens a folder of this side; fails if it does not exist or a link is in the way.</summary>
    public FolderLease OpenFolder(string path) => TryOpenFolder(path) ?? throw new DirectoryNotFoundException(
        $"'{PathOf(path)}' is no longer a folder of this drive, or a link leads to it. List its parent folder and try again.");

    /// <summary>The path below the root for a normalised full path, or null if that is outside the root.</summary>
    public string? TryGetRelative(string fullPath)
    {
        if (fullPath.StartsWith(Prefix, RelativePath.Comparison))
            return RelativePath.TryParse(fullPath[Prefix.Length..]);
        return fullPath.Equals(Root, RelativePath.Comparison) ? RelativePath.Root : null;
    }

    public void Dispose() => _held?.Dispose();

    private FolderLease? TryOpenFolder(string path)
    {
        if (TryOpenRoot() is not { } root)
            return null;
        if (path.Length == 0)
            return root;
        using (root)
            return root.Folder.TryOpen(path) is { } folder ? new FolderLease(folder, isOwned: true) : null;
    }

    private FolderLease? TryOpenRoot()
    {
        if (_held is not null)
            return _held.Root() is { } held ? new FolderLease(held, isOwned: false) : null;
        return Local.OpenFolder.TryOpenRoot(Root) is { } opened ? new FolderLease(opened, isOwned: true) : null;
    }
}
