namespace Quorvex.Tessaport.API.Local;

/// <summary>Repeats on one side the renames and moves of the other.</summary>
internal sealed class MoveFollower
{
    private readonly DriveEdit _edit;
    private readonly DriveSnapshot _snapshot;
    private readonly SyncProgress _progress;
    private readonly ISyncSteps _steps;
    private readonly Func<string, bool> _isAskedFor;

    /// <param name="edit">The drive.</param>
    /// <param name="snapshot">All of it.</param>
    /// <param name="progress">What the pass does.</param>
    /// <param name="steps">How it is done.</param>
    /// <param name="isAskedFor">Whether a move from or to a path is to be followed.</param>
    public MoveFollower(DriveEdit edit, DriveSnapshot snapshot, SyncProgress progress, ISyncSteps steps, Func<string, bool> isAskedFor)
    {
        _edit = edit;
        _snapshot = snapshot;
        _progress = progress;
        _steps = steps;
        _isAskedFor = isAskedFor;
    }

    private RecordTable<string, SyncedRecord> Synced => _edit.Index.Synced;

    /// <summary>Whether anything in a part of a drive has moved since it was last synced.</summary>
    public static bool IsDue(DriveIndex index, DriveSnapshot part) =>
        part.Above().Any(folder => IsOutOfPlace(index, folder)) || part.Top.SelfAndBelow().Any(node => IsOutOfPlace(index, node));

    /// <summary>
    /// Follows the moves on both sides; a folder is moved with everything in it, before its contents are looked at.
    /// </summary>
    public void Run()
    {
        foreach (var side in SideNames.Both)
        {
            foreach (var arrival in Arrivals(side))
            {
                if (PlanFor(side, arrival) is { } plan && (_isAskedFor(plan.Record.Path) || _isAskedFor(arrival.Path)))
                    FollowWithThoseInTheWay(side, arrival);
            }
        }
    }

    private static bool IsOutOfPlace(DriveIndex index, SnapshotNode node)
    {
        if (node.IsRoot || node.LeftOutBy is not null)
            return false;
        var last = index.Synced.ByPath(node.Path);
        foreach (var side in SideNames.Both)
        {
            var identity = node[side]?.Identity ?? FileIdentity.None;
            if (last is not null && last.IdentityOn(side).IsKnown && identity != last.IdentityOn(side))
                return true;
            if (HasArrived(index.Synced, side, identity, last))
                return true;
        }
        return false;
    }

    // The record of its own place is asked first: in a drive where nothing moved, no other is needed.
    private static bool HasArrived(RecordTable<string, SyncedRecord> synced, SideName side, FileIdentity identity, SyncedRecord? last) =>
        identity.IsKnown && last?.IdentityOn(side) != identity && synced.ByIdentity(side, identity) is not null;

    private List<SnapshotNode> Arrivals(SideName side)
    {
        var arrivals = new List<SnapshotNode>();
        foreach (var node in _snapshot.Find(RelativePath.Root)!.SelfAndBelow())
        {
            if (node.LeftOutBy is null && node[side] is { } entry && HasArrived(Synced, side, entry.Identity, Synced.ByPath(node.Path)))
                arrivals.Add(node);
        }
        return arrivals;
    }

    // An item in the way that moves as well goes first; where items only swap places, two of them are exchanged.
    private void FollowWithThoseInTheWay(SideName movedOn, SnapshotNode arrival)
    {
        var waiting = new Stack<SnapshotNode>();
        var isWaiting = new HashSet<SnapshotNode>();
        var tried = new HashSet<SnapshotNode>();
        for (SnapshotNode? next = arrival; next is not null;)
        {
            if (tried.Add(next))
            {
                waiting.Push(next);
                isWaiting.Add(next);
            }
            next = waiting.Peek();
            if (PlanFor(movedOn, next) is { } plan)
            {
                var blocker = Blocker(movedOn, plan);
                if (blocker is not null && !tried.Contains(blocker))
                {
                    next = blocker;
                    continue;
                }
                if (IsFree(movedOn, plan) || (blocker is not null && isWaiting.Contains(blocker)))
                    Attempt(movedOn, plan);
            }
            isWaiting.Remove(waiting.Pop());
            next = waiting.TryPeek(out var above) ? above : null;
        }
    }

    private static bool IsFree(SideName movedOn, MovePlan plan) => plan.From == plan.To || plan.To[movedOn.Opposite()] is null;

    private void Attempt(SideName movedOn, MovePlan plan)
    {
        if (_progress.Attempt(plan.To.Path, () => Follow(movedOn, plan)))
            return;
        // Copying what could not be moved would undo what the user did.
        _progress.Block(plan.From.Path);
        _progress.Block(plan.To.Path);
    }

    /// <summary>
    /// The move to make on the other side for an item that arrived at a place; null if none is needed or possible.
    /// </summary>
    private MovePlan? PlanFor(SideName movedOn, SnapshotNode to)
    {
        var other = movedOn.Opposite();
        var path = to.Path;
        if (to.LeftOutBy is not null || to[movedOn] is not { } arrived || MovedRecord(movedOn, arrived, path) is not { } record)
            return null;
        if (to[other] is { } counterpart && record.IdentityOn(other).Matches(counterpart.Identity))
            return new MovePlan(record, to, to);
        var from = _snapshot.Find(record.Path);
        if (from?[other] is not { } left || _edit.IsLeftOut(record) || !IsCounterpart(left, other, record)
            || RelativePath.IsInside(path, record.Path) || RelativePath.IsInside(record.Path, path))
            return null;
        return new MovePlan(record, from, to);
    }

    /// <summary>The record of the item that came from elsewhere to a path; null if what is there has not moved.</summary>
    private SyncedRecord? MovedRecord(SideName side, FileEntry arrived, string path)
    {
        SyncedRecord? moved = null;
        foreach (var record in Synced.AllByIdentity(side, arrived.Identity))
        {
            if (RelativePath.Comparer.Equals(record.Path, path))
                return null;
            if (moved is null && record.IsFolder == arrived.IsFolder && !HasStayed(side, record))
                moved = record;
        }
        return moved;
    }

    // A further name of the same file (a hard link) is not a move.
    private bool HasStayed(SideName side, SyncedRecord record) =>
        _snapshot.Find(record.Path)?[side] is { } entry && record.IdentityOn(side).Matches(entry.Identity);

    // A file that was saved by replacing it is the counterpart too, but not if it belongs to another item.
    private bool IsCounterpart(FileEntry entry, SideName side, SyncedRecord record) =>
        entry.IsFolder == record.IsFolder
        && (record.IdentityOn(side).Matches(entry.Identity) || Synced.ByIdentity(side, entry.Identity) is null);

    /// <summary>
    /// The new place on one side of the item whose counterpart is still at the target on the other side; null if it has not
    /// moved.
    /// </summary>
    private SnapshotNode? Blocker(SideName movedOn, MovePlan plan)
    {
        if (plan.From == plan.To || plan.To[movedOn.Opposite()] is null || Synced.ByPath(plan.To.Path) is not { } last)
            return null;
        return _snapshot.Find(movedOn, last.IdentityOn(movedOn)) is { } went && PlanFor(movedOn, went) is { } next && next.From == plan.To
            ? went
            : null;
    }

    private void Follow(SideName movedOn, MovePlan plan)
    {
        var (from, to) = (plan.Record.Path, plan.To.Path);
        if (plan.From == plan.To)
        {
            // Both sides moved it to the same place.
            _edit.Index.Move((from, to));
            return;
        }
        var side = movedOn.Opposite();
        NameRules.Require(plan.To.Name);
        if (side == SideName.Server)
            _edit.Drive.RequireWritable();
        MakeFoldersAbove(side, plan.To);
        _steps.RequireSame(movedOn, plan.To, to);
        _steps.RequireSame(side, plan.From, from);
        var isExchange = plan.To[side] is not null;
        NoteContent(side, plan.From, from);
        if (isExchange)
            NoteContent(side, plan.To, to);
        Step.Reached("Move.Checked", to);
        if (isExchange)
            Exchange(side, plan, from, to);
        else
            Rename(side, plan, from, to);
        _progress.Moved(from, to, isExchange);
    }

    // The move counts as a change of the file. If its counterpart was edited as well, only the content can tell then that this one
    // was not.
    private void NoteContent(SideName side, SnapshotNode node, string path)
    {
        if (Synced.ByPath(path) is not { IsFolder: false, Hash.IsKnown: false } record || !IsVersion(VersionState.Synced, side, node, record)
            || _snapshot.Find(side.Opposite(), record.IdentityOn(side.Opposite())) is not { } counterpart
            || !IsVersion(VersionState.Changed, side.Opposite(), counterpart, record))
            return;
        var hash = FileContent.Hash(_steps.FileAt(side, node), out var seen);
        if (VersionCheck.Compare(seen, record, side) == VersionState.Synced)
            Synced.Put(record with { Hash = ContentHash.Parse(hash) });
    }

    private static bool IsVersion(VersionState state, SideName side, SnapshotNode node, SyncedRecord record) =>
        node[side] is { } entry && VersionCheck.Compare(entry, record, side) == state;

    private void Rename(SideName side, MovePlan plan, string from, string to)
    {
        _steps.Move(side, from, to);
        Step.Reached("Move.Done", to);
        _snapshot.Move(side, plan.From, plan.To);
        _edit.Index.Move((from, to));
    }

    private void Exchange(SideName side, MovePlan plan, string from, string to)
    {
        _steps.RequireSame(side, plan.To, to);
        _steps.Exchange(side, from, to);
        Step.Reached("Move.Done", to);
        _snapshot.Exchange(side, plan.From, plan.To);
        _edit.Index.Move((from, to), (to, from));
    }

    private void MakeFoldersAbove(SideName side, SnapshotNode node)
    {
        var missing = new Stack<SnapshotNode>();
        for (var folder = node.Parent!; !folder.IsRoot && folder[side] is null; folder = folder.Parent!)
            missing.Push(folder);
        while (missing.TryPop(out var folder))
            _steps.MakeFolder(folder, side);
    }

    private sealed record MovePlan(SyncedRecord Record, SnapshotNode From, SnapshotNode To);
}
