namespace Quorvex.Tessaport.API.Local;

/// <summary>An item as the union of its two sides at one moment.</summary>
internal readonly record struct ItemView(LocalDrive Drive, string Path, FileEntry? Workspace, FileEntry? Server)
{
    public static ItemView At(LocalDrive drive, string path) =>
        new(drive, path, drive.Workspace.Find(path), drive.Server.Find(path));

    public static ItemView At(DrivePlace place) => At(place.Drive, place.Path);

    public bool Exists => Workspace is not null || Server is not null;

    public bool IsRoot => Path.Length == 0;

    public bool IsFolder => IsRoot || (Workspace ?? Server) is { IsFolder: true };

    /// <summary>Whether one side has a file and the other a folder of that name.</summary>
    public bool SidesDiffer => Workspace is { } local && Server is { } remote && local.IsFolder != remote.IsFolder;

    public DateTime Modified => (Workspace ?? Server)?.Modified ?? DateTime.UnixEpoch;

    public Item ToItem() => ListedItem.Of(this).ToItem();
}
