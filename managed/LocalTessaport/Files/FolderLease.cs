using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>An open folder for the time it is used; closed then, unless someone else holds it open for longer.</summary>
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
