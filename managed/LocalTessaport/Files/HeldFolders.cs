namespace Quorvex.Tessaport.API.Local;

/// <summary>The folders of a side that a request uses repeatedly. Each is opened at its first use.</summary>
internal sealed class HeldFolders : IDisposable
{
    private readonly object _lock = new();
    private readonly string _path;
    private readonly OpenFolder?[] _copies = new OpenFolder?[Local.Staging.CopyFolders];
    private OpenFolder? _root;
    private OpenFolder? _staging;
    private SafeFileHandle? _fileSystem;
    private SafeFileHandle? _rootFileSystem;

    public HeldFolders(string path) => _path = path;

    /// <summary>Null while the folder does not exist.</summary>
    public OpenFolder? Root()
    {
        lock (_lock)
        {
            if (_root is null)
            {
                _root = OpenFolder.TryOpenRoot(_path);
                _rootFileSystem = _root?.OpenFileSystem();
            }
            return _root;
        }
    }

    /// <summary>Flushes all files of the file system of the root; false if that is not reliable.</summary>
    public bool TryFlushFileSystem() => Root() is not null && _rootFileSystem is { } handle && FileHandle.TryFlushFileSystem(handle);

    public OpenFolder Staging()
    {
        var root = Root() ?? throw new DirectoryNotFoundException($"'{_path}' no longer exists. Create it and try again.");
        lock (_lock)
        {
            if (_staging is null)
            {
                _staging = Local.Staging.Open(root);
                // Before any copy is written: a handle that is opened later does not report a failure of which another program knows.
                _fileSystem = _staging.OpenFileSystem();
            }
            return _staging;
        }
    }

    /// <summary>The folder in which this thread prepares copies.</summary>
    public OpenFolder Copies()
    {
        var staging = Staging();
        var number = Environment.CurrentManagedThreadId % _copies.Length;
        lock (_lock)
            return _copies[number] ??= Local.Staging.OpenCopies(staging, number);
    }

    /// <summary>Flushes all files of a file system on which copies are prepared; false if that is not reliable.</summary>
    public bool TryFlushFileSystem(ulong device)
    {
        SafeFileHandle? handle;
        lock (_lock)
            handle = _fileSystem;
        return handle is not null && FileHandle.EntryOf(handle, _path).Device == device && FileHandle.TryFlushFileSystem(handle);
    }

    public void CloseStaging()
    {
        lock (_lock)
        {
            foreach (ref var copies in _copies.AsSpan())
            {
                copies?.Dispose();
                copies = null;
            }
            _fileSystem?.Dispose();
            _fileSystem = null;
            _staging?.Dispose();
            _staging = null;
        }
    }

    public void Dispose()
    {
        CloseStaging();
        _rootFileSystem?.Dispose();
        _root?.Dispose();
    }
}
