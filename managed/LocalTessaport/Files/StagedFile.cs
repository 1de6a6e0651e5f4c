namespace Quorvex.Tessaport.API.Local;

/// <summary>A file in preparation in a folder for copies of a side. It is deleted unless it is committed.</summary>
internal sealed class StagedFile : IDisposable
{
    private readonly DriveSide _side;
    private readonly FolderLease _staging;
    private readonly string _path;
    private string _name = Staging.NewName();
    private FileEntry _entry;
    private bool _isFlushed;
    private bool _isMoved;

    // What came out of the place and could not be put back stays for the next request.
    private bool _mayHoldOther;

    public StagedFile(DriveSide side)
    {
        _side = side;
        _staging = side.OpenCopies();
        _path = Path.Join(_staging.Folder.Path, _name);
        try
        {
            Handle = _staging.Folder.CreateFile(_name);
        }
        catch
        {
            _staging.Dispose();
            throw;
        }
    }

    public SafeFileHandle Handle { get; }

    public void Write(ReadOnlySpan<byte> block, long offset) => FileHandle.Write(Handle, block, offset, _path);

    /// <summary>
    /// Gives the copy the time and permissions of its source and closes it, so that large groups hold no descriptors.
    /// </summary>
    public void Finish(FileEntry source)
    {
        FileHandle.Finish(Handle, _path, source);
        _entry = FileHandle.EntryOf(Handle, _path);
        Handle.Dispose();
    }

    /// <summary>Files that agree in this are flushed together: their side, and the file system that holds them.</summary>
    public (DriveSide Side, ulong Device) Group => (_side, _entry.Device);

    public void Flush()
    {
        using var file = _staging.Folder.OpenToFlush(_name);
        FileHandle.Flush(file, _path);
        SetFlushed();
    }

    /// <summary>Marks the file as flushed together with others.</summary>
    public void SetFlushed() => _isFlushed = true;

    /// <param name="folder">The folder that the path leads to.</param>
    /// <param name="path">The path below the root of the side.</param>
    /// <param name="expected">What is replaced; null for a new file.</param>
    public FileEntry Commit(OpenFolder folder, string path, FileEntry? expected)
    {
        if (!_isFlushed)
            throw new InvalidOperationException("A staged copy must be flushed before it takes its place.");
        var placement = new Placement(_staging.Folder, _name, _entry, folder, path);
        try
        {
            _mayHoldOther = true;
            var placed = placement.Put(expected);
            _mayHoldOther = false;
            _isMoved = expected is null;
            return placed;
        }
        catch (ChangedException)
        {
            _mayHoldOther = false;
            throw;
        }
        finally
        {
            _name = placement.Prepared;
        }
    }

    public void Dispose()
    {
        Handle.Dispose();
        if (!_mayHoldOther && !_isMoved)
            _staging.Folder.TryDelete(_name);
        _staging.Dispose();
    }
}
