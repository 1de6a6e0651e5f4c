namespace Quorvex.Tessaport.API.Local;

/// <summary>Maps the files of one side to their current paths. Built on first use: few requests need to walk a drive.</summary>
internal sealed class SideMap
{
    private readonly DriveSide _side;
    private Dictionary<(FileIdentity Identity, bool IsFolder), string>? _byIdentity;
    private Dictionary<long, List<string>>? _bySize;

    public SideMap(DriveSide side) => _side = side;

    // Some file systems give a new folder the number of a deleted file.
    public string? PathOf(FileIdentity identity, bool isFolder)
    {
        Fill();
        return identity.IsKnown ? _byIdentity!.GetValueOrDefault((identity, isFolder)) : null;
    }

    public IReadOnlyList<string> FilesOfSize(long size)
    {
        Fill();
        return _bySize!.TryGetValue(size, out var paths) ? paths : [];
    }

    public void Reset()
    {
        _byIdentity = null;
        _bySize = null;
    }

    private void Fill()
    {
        if (_byIdentity is not null)
            return;
        _byIdentity = [];
        _bySize = [];
        foreach (var (path, entry) in DriveScan.Walk(_side))
        {
            var identity = entry.Identity.IsKnown ? entry.Identity : _side.Find(path)?.Identity ?? FileIdentity.None;
            if (identity.IsKnown)
                _byIdentity.TryAdd((identity, entry.IsFolder), path);
            if (entry.IsFolder)
                continue;
            if (!_bySize.TryGetValue(entry.Size, out var paths))
                _bySize[entry.Size] = paths = [];
            paths.Add(path);
        }
    }
}
