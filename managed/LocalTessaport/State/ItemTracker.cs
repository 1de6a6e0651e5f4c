namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Finds the record of each item of a drive during a request, although other programs rename, move, replace and copy back
/// files without the service.
/// </summary>
internal sealed class ItemTracker
{
    private readonly LocalDrive _drive;
    private readonly RecordTable<Guid, ItemRecord> _items;

    public ItemTracker(LocalDrive drive, RecordTable<Guid, ItemRecord> items)
    {
        _drive = drive;
        _items = items;
        Local = new SideMap(drive.Workspace);
        Remote = new SideMap(drive.Server);
    }

    public SideMap Local { get; }
    public SideMap Remote { get; }

    /// <summary>Forgets what was seen on the drive, after an item was moved.</summary>
    public void Reset()
    {
        Local.Reset();
        Remote.Reset();
    }

    /// <summary>The record of an item, or null when it has none yet.</summary>
    public ItemRecord? RecordOf(ItemView view)
    {
        ItemRecord?[] candidates =
            [_items.BySide(SideName.Workspace, view), _items.BySide(SideName.Server, view), _items.ByPath(view.Path)];
        foreach (var candidate in candidates)
        {
            if (candidate is not null && candidate.IsFolder == view.IsFolder && IsAt(candidate, view.Path))
                return candidate;
        }
        return null;
    }

    /// <summary>The current path of the item of a record, or null if it no longer exists.</summary>
    public string? PathOf(ItemRecord record)
    {
        var view = ItemView.At(_drive, record.Path);
        return FollowOneSide(record, record.Local, view.Workspace, Local)
            ?? FollowOneSide(record, record.Remote, view.Server, Remote)
            ?? FindByPath(record, view)
            ?? FindByContent(record);
    }

    private bool IsAt(ItemRecord record, string path) => RelativePath.Comparer.Equals(PathOf(record), path);

    private static string? FollowOneSide(ItemRecord record, FileIdentity identity, FileEntry? inPlace, SideMap side) =>
        !identity.IsKnown ? null
        : inPlace is { } entry && entry.IsFolder == record.IsFolder && identity.Matches(entry.Identity) ? record.Path
        : side.PathOf(identity, record.IsFolder);

    // A file that was saved by writing a new one and renaming it over the old one has a new number and the same path.
    private string? FindByPath(ItemRecord record, ItemView view) =>
        view.Exists && view.IsFolder == record.IsFolder && !BelongsToAnother(record, view) ? record.Path : null;

    private bool BelongsToAnother(ItemRecord record, ItemView view) =>
        IsOther(_items.BySide(SideName.Workspace, view), record) || IsOther(_items.BySide(SideName.Server, view), record);

    private static bool IsOther(ItemRecord? found, ItemRecord record) => found is not null && found.Key != record.Key;

    private string? FindByContent(ItemRecord record)
    {
        if (record.Content is not { } content)
            return null;
        foreach (var (side, map) in new[] { (_drive.Workspace, Local), (_drive.Server, Remote) })
        {
            foreach (var path in map.FilesOfSize(content.Size))
            {
                if (IsUnclaimed(path) && ContentHash.Parse(FileContent.Hash(side.At(path))) == content.Hash)
                    return path;
            }
        }
        return null;
    }

    private bool IsUnclaimed(string path)
    {
        var view = ItemView.At(_drive, path);
        return _items.ByPath(path) is null
            && _items.BySide(SideName.Workspace, view) is null
            && _items.BySide(SideName.Server, view) is null;
    }
}
