namespace Quorvex.Tessaport.API.Local;

/// <summary>The folders of a side that a request uses repeatedly. Each is opened at its first use.</summary>
internal sealed class HeldFolders : IDisposable
{
    private readonly object _lock = new();
    private readonly string _path;
    private readonly OpenFolder?[] _copies = new OpenFolder?[Local.Staging.CopyFolders];
    private OpenFolder? _root;
    private OpenFolder? _staging;

    public HeldFolders(string path) => _path = path;

    /// <summary>Null while the folder does not exist.</summary>
    public OpenFolder? Root()
    {
        lock (_lock)
            return _root ??= OpenFolder.TryOpenRoot(_path);
    }

    public OpenFolder Staging()
    {
        var root = Root() ?? throw new DirectoryNotFoundException($"'{_path}' no longer exists. Create it and try again.");
        lock (_lock)
            return _staging ??= Local.Staging.Open(root);
    }

    /// <summary>The folder in which this thread prepares copies.</summary>
    public OpenFolder Copies()
    {
        var staging = Staging();
        var number = Environment.CurrentManagedThreadId % _copies.Length;
        lock (_lock)
            return _copies[number] ??= Local.Staging.OpenCopies(staging, number);
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
            _staging?.Dispose();
            _staging = null;
        }
    }

    public void Dispose()
    {
        CloseStaging();
        _root?.Dispose();
    }
}
