namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// A folder that is held open. Each operation concerns one name in it, and so happens in this folder even if its path leads
/// elsewhere by now. Links are never followed. Several threads may use it at once.
/// </summary>
internal abstract class OpenFolder : IDisposable
{
    private PlaceList? _places;

    protected OpenFolder(string path) => Path = path;

    /// <summary>Where it was opened, for messages.</summary>
    public string Path { get; }

    /// <summary>Where what comes into this folder belongs, if it is a staging folder.</summary>
    public PlaceList Places => LazyInitializer.EnsureInitialized(ref _places, () => new PlaceList(this));

    /// <summary>Whether it turned out that the file system cannot exchange files.</summary>
    public bool CannotExchange { get; set; }

    /// <summary>Opens a folder by its full path; null if it does not exist.</summary>
    public static OpenFolder? TryOpenRoot(string path) =>
        OperatingSystem.IsWindows() ? WindowsFolder.TryOpenRoot(path) : UnixFolder.TryOpenRoot(path);

    /// <summary>Opens a folder below this one by its relative path; null if it does not exist or is a link or a file.</summary>
    public abstract OpenFolder? TryOpen(string relative);

    /// <summary>The entry with this name, links and devices included; null only if nothing has the name.</summary>
    public abstract FileEntry? Find(string name);

    /// <summary>The files and folders with names that can be listed, in no particular order, without those that a filter leaves out.</summary>
    public abstract List<NamedEntry> Read(IEntryFilter? filter = null);

    /// <summary>The name as it is spelled on the disk, where case does not matter.</summary>
    public abstract string SpellingOf(string name);

    /// <summary>The creation time of an item; null if it does not exist.</summary>
    public abstract DateTime? CreationTimeOf(string name);

    /// <summary>Opens a file for reading without blocking other programs.</summary>
    public abstract OpenedFile OpenFile(string name);

    /// <summary>Creates a file that only its owner can read; fails if anything has the name.</summary>
    public abstract SafeFileHandle CreateFile(string name);

    /// <summary>Opens a file of this folder that its owner created, to flush it.</summary>
    public abstract SafeFileHandle OpenToFlush(string name);

    /// <summary>
    /// Flushes a file to the disk, or the names in a folder; nothing if there is no such item. A no-op where the system offers no such
    /// flush to those who only read.
    /// </summary>
    /// <returns>Whether that could be done; false if the item cannot be opened.</returns>
    public virtual bool TryFlush(string name) => true;

    /// <summary>The same for the names in this folder.</summary>
    public virtual bool TryFlushNames() => true;

    /// <summary>Opens the folder itself, to flush all files of its file system; null where that is not possible.</summary>
    public virtual SafeFileHandle? OpenFileSystem() => null;

    /// <summary>Creates a folder with at most the rights of another one; false if there is a folder already.</summary>
    public abstract bool MakeFolder(string name, FileEntry? like);

    /// <summary>
    /// Creates a folder that only its owner can enter, and that <see cref="RequireOwn"/> recognizes; false if there is a folder already.
    /// </summary>
    public virtual bool MakeOwnFolder(string name) => MakeFolder(name, like: null);

    /// <summary>
    /// Fails unless this folder was made by <see cref="MakeOwnFolder"/> for this user. A no-op where folders pass on their permissions.
    /// </summary>
    /// <exception cref="ForeignFolderException">It was not.</exception>
    public virtual void RequireOwn()
    {
    }

    /// <summary>Renames an item; never replaces anything.</summary>
    /// <exception cref="ChangedException">Something has the new name.</exception>
    public abstract void Move(string name, OpenFolder to, string newName);

    /// <summary>Exchanges two files in one step; false if the file system cannot.</summary>
    public abstract bool TryExchange(string name, OpenFolder other, string otherName);

    /// <summary>
    /// Keeps other programs from writing to a file that is the expected one, for as long as the result is held.
    /// </summary>
    /// <exception cref="ChangedException">It is another version, or is being written.</exception>
    public abstract WriteGuard Guard(string name, FileEntry expected);

    /// <summary>Deletes everything in this folder, of any kind and depth; items that cannot be deleted stay.</summary>
    /// <returns>Whether the folder is empty now.</returns>
    public abstract bool Empty();

    /// <summary>Deletes a file if it exists; after a failure, the next clearing of the folder deletes it.</summary>
    public abstract void TryDelete(string name);

    /// <summary>Deletes an empty folder.</summary>
    public abstract void RemoveFolder(string name);

    public virtual void Dispose() => _places?.Dispose();

    protected string PathOf(string name) => System.IO.Path.Join(Path, PathForm.ToPlatform(name));
}
