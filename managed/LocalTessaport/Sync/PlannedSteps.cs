namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The steps of a sync, only planned: they change a picture of the drive and a copy of its records, and nothing on either side. What
/// a sync would meet is looked up on the drive, where it is before the sync.
/// </summary>
internal sealed class PlannedSteps : ISyncSteps
{
    private readonly DriveEdit _edit;
    private readonly DriveSnapshot _picture;
    private readonly Dictionary<(SideName, FileIdentity), string> _places = [];
    private readonly Dictionary<FileIdentity, FileSource> _copies = [];
    private readonly HashSet<(SideName, FileIdentity)> _unread = [];

    public PlannedSteps(DriveEdit edit)
    {
        _edit = edit;
        _picture = edit.WholeSnapshot();
        foreach (var node in _picture.Top.SelfAndBelow())
        {
            foreach (var side in SideNames.Both)
                Remember(side, node, node.Path, isRead: node.LeftOutBy is null);
        }
    }

    public DriveSnapshot LookAt(string path)
    {
        if (_unread.Count > 0)
            ReadWhatIsNoLongerLeftOut();
        return _picture.PartAt(path);
    }

    public DriveSnapshot LookAtAll() => _picture;

    public ItemView ViewAt(string path) =>
        _picture.Find(path) is { } node ? _edit.ViewOf(node, path) : new ItemView(_edit.Drive, path, null, null);

    public FileSource FileAt(SideName side, SnapshotNode node) =>
        node[side] is { } entry && _copies.TryGetValue(entry.Identity, out var source) ? source
        : _edit.Drive.Side(side).At(PlaceOf(side, node) ?? node.Path);

    public void RequireSame(SideName side, SnapshotNode node, string path)
    {
        // The picture is all that a plan knows.
    }

    public void MakeFolder(SnapshotNode folder, SideName side)
    {
        FolderMaker.RequireAllowed(_edit, folder.Name, side);
        if (HasObstacle(side, folder))
            throw Obstacle.At(_edit.Drive.Side(side), folder.Path);
        _picture.Put(side, folder, new FileEntry { Kind = EntryKind.Folder });
        if (Unseen(side, folder) is not { IsFolder: true } found)
            return;
        _picture.Put(side, folder, found);
        _unread.Add((side, found.Identity));
        _places.TryAdd((side, found.Identity), RelativePath.Join(PlaceOf(side, folder.Parent!)!, folder.Name));
    }

    public void Move(SideName side, string from, string to) => RequireFree(side, to);

    public void Exchange(SideName side, string one, string other)
    {
        // Both are in the picture, where they are exchanged next, so nothing else can be in the way.
    }

    public ItemView KeepCopy(SnapshotNode node, string path, SideName side)
    {
        var source = FileAt(side, node);
        var copy = ConflictCopy.ChoosePath(path, node[side]!.Value.Modified, (on, candidate) => IsFreeOrSame(on, candidate, source));
        _edit.Drive.RequireWritable();
        NameRules.Require(RelativePath.NameOf(copy));
        var kept = _picture.Place(copy);
        PutCopy(kept, SideName.Workspace, node[side]!.Value, source);
        PutCopy(kept, SideName.Server, node[side]!.Value, source);
        RecordEqual(kept);
        ConflictCopy.Mark(_edit.Index, copy, path, side);
        return _edit.ViewOf(kept, copy);
    }

    public ITransfers Transfers(SyncProgress progress, ChangeReport report) => new Plan(this, progress, report);

    public void Record(SyncedRecord record, ItemView view) => _edit.NoteSynced(record);

    private void Remember(SideName side, SnapshotNode node, string place, bool isRead)
    {
        if (node[side] is not { Identity.IsKnown: true } entry)
            return;
        if (_places.TryAdd((side, entry.Identity), place) && entry.IsFolder && !isRead)
            _unread.Add((side, entry.Identity));
    }

    // A folder can be moved to where no pattern leaves it out. A sync sees what is in it with its next look, at any depth: the folders
    // in it come later in the same loop.
    private void ReadWhatIsNoLongerLeftOut()
    {
        foreach (var node in _picture.Top.SelfAndBelow())
        {
            foreach (var side in SideNames.Both)
            {
                if (node.LeftOutBy is null && node[side] is { } entry && _unread.Remove((side, entry.Identity))
                    && PlaceOf(side, node) is { } place)
                {
                    _picture.ReadLater(node, side, place);
                    foreach (var child in node.Children())
                        Remember(side, child, RelativePath.Join(place, child.Name), isRead: false);
                }
            }
        }
    }

    // A copy has a number of its own, which no other file has.
    private void PutCopy(SnapshotNode node, SideName side, FileEntry source, FileSource content)
    {
        var number = new FileIdentity(ulong.MaxValue, -1 - _copies.Count);
        _copies[number] = content;
        _picture.Put(side, node, source with { Identity = number });
    }

    private void RecordEqual(SnapshotNode node)
    {
        var seen = new SeenVersion[] { new(node[SideName.Workspace]!.Value, true), new(node[SideName.Server]!.Value, true) };
        Record(SyncedRecord.ForFile(node.Path, seen[0], seen[1], ContentHash.Unknown), _edit.ViewOf(node, node.Path));
    }

    private bool IsFreeOrSame(SideName side, string path, FileSource source)
    {
        var node = _picture.Place(path);
        return node[side] is { } entry
            ? !entry.IsFolder && FileContent.AreEqual(FileAt(side, node), source)
            : !HasObstacle(side, node);
    }

    private void RequireFree(SideName side, string path)
    {
        var node = _picture.Place(path);
        if (HasObstacle(side, node) || Unseen(side, node) is not null)
            throw new ChangedException(_edit.Drive.Side(side).PathOf(path));
    }

    // Links and devices are not in the picture. They move with their folder.
    private bool HasObstacle(SideName side, SnapshotNode node) =>
        PlaceOf(side, node.Parent!) is { } folder
        && _edit.Drive.Side(side).FindAny(RelativePath.Join(folder, node.Name)) is { Kind: EntryKind.Other };

    // What a sync does not know of yet and finds when it comes to put something there.
    private FileEntry? Unseen(SideName side, SnapshotNode node) =>
        node.Parent![side] is { } folder && _unread.Contains((side, folder.Identity)) && PlaceOf(side, node.Parent) is { } place
            ? _edit.Drive.Side(side).Find(RelativePath.Join(place, node.Name))
            : null;

    /// <summary>Where something is on the drive; null for what is only planned.</summary>
    private string? PlaceOf(SideName side, SnapshotNode node) =>
        node.IsRoot ? RelativePath.Root
        : node[side] is { Identity.IsKnown: true } entry ? _places.GetValueOrDefault((side, entry.Identity))
        : null;

    private sealed class Plan : ITransfers
    {
        private readonly PlannedSteps _steps;
        private readonly SyncProgress _progress;
        private readonly ChangeReport _report;
        private readonly List<(SnapshotNode Node, SideName From)> _waiting = [];

        public Plan(PlannedSteps steps, SyncProgress progress, ChangeReport report)
        {
            _steps = steps;
            _progress = progress;
            _report = report;
        }

        public void Add(SnapshotNode node, SideName from)
        {
            TransferQueue.RequireAllowed(_steps._edit.Drive, node, from);
            _waiting.Add((node, from));
        }

        public void Flush()
        {
            foreach (var (node, from) in _waiting)
                _progress.Attempt(node.Path, () => Copy(node, from));
            _waiting.Clear();
        }

        public void Dispose() => _waiting.Clear();

        private void Copy(SnapshotNode node, SideName from)
        {
            var to = from.Opposite();
            if (node[to] is null && _steps.HasObstacle(to, node))
                throw Obstacle.At(_steps._edit.Drive.Side(to), node.Path);
            if (node[to] is null && _steps.Unseen(to, node) is not null)
                throw new ChangedException(_steps._edit.Drive.Side(to).PathOf(node.Path));
            var source = _steps.FileAt(from, node);
            // Whether it can be read is known only when it is opened.
            source.Open().Dispose();
            _steps.PutCopy(node, to, node[from]!.Value, source);
            _steps.RecordEqual(node);
            _progress.Worked();
            _report.Updated(_steps._edit.ViewOf(node, node.Path), SyncActions.From(from));
        }
    }
}
