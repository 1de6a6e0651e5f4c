namespace Quorvex.Tessaport.API.Local;

/// <summary>The folders of a side that a request uses repeatedly. Each is opened at its first use.</summary>
internal sealed class HeldFolders : IDisposable
{
    private readonly object _lock = new();
    private readonly string _path;
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

    public void CloseStaging()
    {
        lock (_lock)
        {
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
