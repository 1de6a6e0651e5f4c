namespace Quorvex.Tessaport.API.Local;

/// <summary>What was at a path on both sides when they were last equal.</summary>
internal sealed record SyncedRecord(string Path, bool IsFolder) : ITrackedRecord<string>
{
    public string Key => Path;
    public FileIdentity Local { get; init; }
    public FileIdentity Remote { get; init; }
    public VersionStamp LocalStamp { get; init; }
    public VersionStamp RemoteStamp { get; init; }

    /// <summary>The content on both sides, if it was read.</summary>
    public ContentHash Hash { get; init; }

    /// <summary>Set on a copy that was kept in a conflict, until the conflict is settled.</summary>
    public ConflictMark? Conflict { get; init; }

    public FileIdentity IdentityOn(SideName side) => side == SideName.Workspace ? Local : Remote;

    public VersionStamp StampOn(SideName side) => side == SideName.Workspace ? LocalStamp : RemoteStamp;

    public static SyncedRecord ForFolder(string path, FileEntry local, FileEntry remote) =>
        new(path, IsFolder: true) { Local = local.Identity, Remote = remote.Identity };

    public static SyncedRecord ForFile(string path, SeenVersion local, SeenVersion remote, ContentHash hash) => new(path, IsFolder: false)
    {
        Local = local.Entry.Identity,
        Remote = remote.Entry.Identity,
        LocalStamp = local.Stamp,
        RemoteStamp = remote.Stamp,
        Hash = hash,
    };

    /// <summary>
    /// For files that were found equal. Files that were changed a moment ago are hashed, because another change may not show in
    /// their times.
    /// </summary>
    public static SyncedRecord ForEqual(string path, SeenVersion local, SeenVersion remote, FileSource content)
    {
        var isSettled = local.IsSettled && remote.IsSettled;
        return ForFile(path, local, remote, isSettled ? ContentHash.Unknown : ContentHash.Parse(FileContent.Hash(content)));
    }
}
