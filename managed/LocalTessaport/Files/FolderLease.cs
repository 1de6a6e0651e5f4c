namespace Quorvex.Tessaport.API.Local;

/// <summary>Access to an open folder. Disposal closes the folder unless another object owns it.</summary>
internal readonly struct FolderLease : IDisposable
{
    private readonly bool _isOwned;

    public FolderLease(OpenFolder folder, bool isOwned)
    {
        Folder = folder;
        _isOwned = isOwned;
    }

    public OpenFolder Folder { get; }

    public void Dispose()
    {
        if (_isOwned)
            Folder.Dispose();
    }
}
