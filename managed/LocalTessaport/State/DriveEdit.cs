namespace Quorvex.Tessaport.API.Local;

/// <summary>One drive while a request changes it: the files, and a copy of its records that is saved at the end.</summary>
internal sealed class DriveEdit : IDisposable
{
    private readonly HashSet<(SideName Side, string Folder)> _keptIn = [];
    private DriveSnapshot? _snapshot;

    public DriveEdit(LocalDrive drive, DriveIndex index)
    {
        Drive = drive.Opened();
        Index = index;
        Tracker = new ItemTracker(Drive, index.Items);
    }

    public LocalDrive Drive { get; }
    public DriveIndex Index { get; }
    public ItemTracker Tracker { get; }

    public void Dispose() => Drive.Dispose();

    public ItemView At(string path) => ItemView.At(Drive, path);

    public ItemView ViewOf(SnapshotNode node, string path) => new(Drive, path, node[SideName.Workspace], node[SideName.Server]);

    /// <summary>
    /// Both sides as they were when this request first asked. Code that acts on it checks what is there now, and drops the
    /// snapshot if that differs.
    /// </summary>
    public DriveSnapshot WholeSnapshot() => _snapshot ??= DriveSnapshot.Take(Drive, RelativePath.Root);

    public void ForgetSnapshot() => _snapshot = null;

    /// <summary>Notes that a version was kept beside another, in a folder of the side on which that one is replaced next.</summary>
    public void NoteKept(SideName side, string folder) => _keptIn.Add((side, folder));

    /// <summary>Has on the disk what was kept, before anything is replaced.</summary>
    public void FlushKept()
    {
        foreach (var (side, folder) in _keptIn)
            DriveFlush.Names(Drive.Side(side), folder);
        _keptIn.Clear();
    }

    /// <summary>The record of an existing item, updated to what the view shows; a new one if the item has none.</summary>
    public ItemRecord Record(ItemView view)
    {
        var record = (Tracker.RecordOf(view) ?? ItemRecord.For(view) with { Content = KnownContentOf(view) }).SeenIn(view);
        Index.Items.Put(record);
        return record;
    }

    /// <summary>Notes that both sides of an item are equal now.</summary>
    public void RecordSynced(SyncedRecord record, ItemView view)
    {
        NoteSynced(Index.Synced.ByPath(record.Path) is null ? ConflictCopy.Recognise(record, view) : record);
        if (IsNamed(view) && Tracker.RecordOf(view) is { } item)
            Index.Items.Put(item.SeenIn(view) with { Content = KnownContentOf(view) ?? item.Content });
    }

    /// <summary>The same in the records of what was synced alone.</summary>
    public void NoteSynced(SyncedRecord record)
    {
        if (Drive.Ignored is not null)
            ForgetLeftOut(record);
        Index.Synced.Put(Index.Synced.ByPath(record.Path) is { } last ? record with { Conflict = last.Conflict } : record);
    }

    /// <summary>Drops the sync records of what is on neither side any more. What is left out was not looked at.</summary>
    public void ForgetWhatIsGone(DriveSnapshot drive)
    {
        foreach (var record in Index.Synced.Records.Where(record => !Exists(drive.Find(record.Path)) && !IsLeftOut(record)).ToList())
            Index.Synced.Remove(record);
    }

    /// <summary>Whether the patterns leave out what a record is about.</summary>
    public bool IsLeftOut(SyncedRecord record) => Drive.Ignored?.PatternFor(record.Path, record.IsFolder) is not null;

    // A file that was synced, then left out, and then renamed to what is synced is another item from then on.
    private void ForgetLeftOut(SyncedRecord arrived)
    {
        foreach (var side in SideNames.Both)
        {
            foreach (var earlier in Index.Synced.AllByIdentity(side, arrived.IdentityOn(side)).ToList())
            {
                if (!RelativePath.Comparer.Equals(earlier.Path, arrived.Path) && IsLeftOut(earlier))
                    Index.Synced.Remove(earlier);
            }
        }
    }

    private static bool Exists(SnapshotNode? node) => node is not null && (node[SideName.Workspace] ?? node[SideName.Server]) is not null;

    // Few drives have named items, and finding the record of one means reading file properties.
    private bool IsNamed(ItemView view) =>
        (Index.Items.BySide(SideName.Workspace, view) ?? Index.Items.BySide(SideName.Server, view) ?? Index.Items.ByPath(view.Path)) is not null;

    private ContentMark? KnownContentOf(ItemView view) =>
        Index.Synced.ByPath(view.Path) is { IsFolder: false, Hash.IsKnown: true } synced
        && view.Workspace is { } local && VersionCheck.Compare(local, synced, SideName.Workspace) != VersionState.Changed
            ? new ContentMark(local.Size, synced.Hash)
            : null;
}
