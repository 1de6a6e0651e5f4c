namespace Quorvex.Tessaport.API.Local;

/// <summary>The configured drives, in their order.</summary>
internal sealed class DriveList
{
    private readonly Dictionary<Guid, LocalDrive> _byId = [];
    private readonly Dictionary<string, LocalDrive> _byWorkspace = new(RelativePath.Comparer);

    /// <summary>The folders of the drives do not overlap each other.</summary>
    /// <exception cref="InvalidDataException">Two drives have one id; the message is the reason.</exception>
    public DriveList(IReadOnlyList<LocalDrive> drives)
    {
        Drives = drives;
        foreach (var drive in drives)
        {
            if (!_byId.TryAdd(drive.Id, drive))
                throw new InvalidDataException($"two drives have the id '{drive.Id}'");
            _byWorkspace.Add(drive.Workspace.Root, drive);
        }
    }

    public static DriveList Empty { get; } = new([]);

    public IReadOnlyList<LocalDrive> Drives { get; }

    public LocalDrive? Find(Guid id) => _byId.TryGetValue(id, out var drive) ? drive : null;

    /// <summary>
    /// The drive whose workspace holds a full path with either slash, and the path below its root; null for other places.
    /// </summary>
    public DrivePlace? Locate(string? path)
    {
        if (PathForm.TryNormalise(path) is not { } full)
            return null;
        return LocateNormalised(full) ?? LocateNormalised(RealPath.Of(full));
    }

    private DrivePlace? LocateNormalised(string full)
    {
        for (var folder = full; !string.IsNullOrEmpty(folder); folder = Path.GetDirectoryName(folder))
        {
            if (_byWorkspace.TryGetValue(folder, out var drive))
                return drive.Workspace.TryGetRelative(full) is { } relative ? new DrivePlace(drive, relative) : null;
        }
        return null;
    }
}

/// <summary>A place on a drive, whether or not an item exists there.</summary>
internal readonly record struct DrivePlace(LocalDrive Drive, string Path);
