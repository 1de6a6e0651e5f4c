namespace Quorvex.Tessaport.API.Local;

/// <summary>An item as the union of its two sides at one moment.</summary>
internal sealed record ItemView(LocalDrive Drive, string Path, FileEntry? Workspace, FileEntry? Server)
{
    public static ItemView At(LocalDrive drive, string path) =>
        new(drive, path, drive.Workspace.Find(path), drive.Server.Find(path));

    /// <summary>The root of a drive, also if a folder of the drive cannot be opened: its requests then say why.</summary>
    public static ItemView OfRoot(LocalDrive drive) =>
        new(drive, RelativePath.Root, TryFindRoot(drive.Workspace), TryFindRoot(drive.Server));

    /// <summary>An item whose properties are asked for; of a root they include why the drive cannot be used.</summary>
    public static ItemView ToDescribe(DrivePlace place) =>
        place.Path.Length == 0 ? OfRoot(place.Drive) : At(place.Drive, place.Path);

    public bool Exists => Workspace is not null || Server is not null;

    public bool IsRoot => Path.Length == 0;

    public bool IsFolder => IsRoot || (Workspace ?? Server) is { IsFolder: true };

    /// <summary>Whether one side has a file and the other a folder of that name.</summary>
    public bool SidesDiffer => Workspace is { } local && Server is { } remote && local.IsFolder != remote.IsFolder;

    public DateTime Modified => (Workspace ?? Server)?.Modified ?? DateTime.UnixEpoch;

    public Item ToItem() => ListedItem.Of(this).ToItem();

    private static FileEntry? TryFindRoot(DriveSide side)
    {
        try
        {
            return side.Find(RelativePath.Root);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return null;
        }
    }
}
