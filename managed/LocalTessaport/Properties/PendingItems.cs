using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Lists what is not in sync at an item and in it. One look at both sides is much faster than a request for each folder.
/// </summary>
internal sealed class PendingItems
{
    private readonly PropertySource _top;
    private readonly Dictionary<string, string> _locks;
    private readonly Utf8JsonWriter _json;

    private PendingItems(PropertySource top, Utf8JsonWriter json)
    {
        _top = top;
        _locks = LocksOf(top);
        _json = json;
    }

    /// <summary>
    /// A JSON array with one object for each item that is not in sync, is locked or was kept in a conflict, folders before their
    /// contents. What cannot be synced because of the folder it is in is not listed.
    /// </summary>
    public static string Describe(PropertySource top) => JsonList.Make(json =>
    {
        var items = new PendingItems(top, json);
        items.ListAll(items.List, items.IsInSync, items.FilesInSync());
    });

    /// <summary>The same for what the patterns of the drive leave out; of a folder that is left out, only the folder.</summary>
    public static string DescribeLeftOut(PropertySource top) => JsonList.Make(json =>
    {
        var items = new PendingItems(top, json);
        items.ListAll(items.ListLeftOut, node => node.LeftOutBy is null, null);
    });

    /// <param name="list">Lists one item if it belongs in the list; false if nothing that is in it does.</param>
    /// <param name="isNotListed">Whether a file certainly does not belong there, found out without more than its entries.</param>
    /// <param name="known">Files of which the same was found out before that; null for none.</param>
    private void ListAll(Predicate<SnapshotNode> list, Predicate<SnapshotNode> isNotListed, SyncedFiles? known)
    {
        var snapshot = DriveSnapshot.Begin(_top.Drive, _top.View.Path);
        var pending = new Stack<SnapshotNode>();
        var inner = new List<SnapshotNode>();
        pending.Push(snapshot.Top);
        while (pending.TryPop(out var node))
        {
            snapshot.LookInto(node, known);
            if (list(node))
            {
                foreach (var child in node.Inner())
                {
                    if (child.IsFolderOnEither || !isNotListed(child))
                        inner.Add(child);
                }
                inner.Sort(SnapshotNode.ByName);
                for (var i = inner.Count - 1; i >= 0; --i)
                    pending.Push(inner[i]);
                inner.Clear();
            }
            node.ForgetInner();
        }
    }

    /// <summary>
    /// Whether nothing has to be said about a file: as last synced on both sides, and nothing else is known of it. In a drive, that
    /// is nearly all files.
    /// </summary>
    private bool IsInSync(SnapshotNode file)
    {
        if (file.LeftOutBy is not null || file[SideName.Workspace] is not { } local || file[SideName.Server] is not { } remote)
            return false;
        var path = file.Path;
        return _top.Index.Synced.ByPath(path) is { Conflict: null } synced
            && VersionCheck.Compare(local, synced, SideName.Workspace) == VersionState.Synced
            && VersionCheck.Compare(remote, synced, SideName.Server) == VersionState.Synced
            && !IsNoted(path);
    }

    private SyncedFiles? FilesInSync() => _top.Index.Synced.Stored is StoredRecords stored
        ? new SyncedFiles(stored, _locks.Count + _top.Index.Failures.Reasons.Count > 0 ? IsNoted : null)
        : null;

    private bool IsNoted(string path) => _top.Index.Failures.At(path) is not null || _locks.ContainsKey(path);

    /// <summary>Lists one item if it is pending; false if a sync does not look at what is in it.</summary>
    private bool List(SnapshotNode node)
    {
        var source = SourceFor(node);
        if (node.LeftOutBy is { } pattern)
        {
            ListIfKeptInAConflict(source, pattern);
            return false;
        }
        var state = SyncStates.Of(source);
        var error = node.Unreadable ?? SyncStates.ReasonOf(source);
        var other = Conflicts.OtherOf(source.Drive, source.Synced);
        var isInSync = state is null or SyncStates.InSync || (state == SyncStates.LeftOut && SyncStates.IsEqual(source.View, source.Synced));
        if (!isInSync || error is not null || other is not null)
            Write(source, state ?? SyncStates.InSync, error, other);
        return !source.View.SidesDiffer && (isInSync || state != SyncStates.LeftOut);
    }

    private bool ListLeftOut(SnapshotNode node)
    {
        if (node.LeftOutBy is not { } pattern)
            return true;
        var source = SourceFor(node);
        Write(source, SyncStates.LeftOut, LeftOut.ReasonFor(pattern), Conflicts.OtherOf(source.Drive, source.Synced));
        return false;
    }

    // A conflict is settled also if a pattern leaves out the copy.
    private void ListIfKeptInAConflict(PropertySource source, string pattern)
    {
        if (Conflicts.OtherOf(source.Drive, source.Synced) is { } other)
            Write(source, SyncStates.LeftOut, LeftOut.ReasonFor(pattern), other);
    }

    private PropertySource SourceFor(SnapshotNode node)
    {
        var view = new ItemView(_top.Drive, node.Path, node[SideName.Workspace], node[SideName.Server]);
        return new PropertySource(view, _top.Index) { LockedBy = _locks.GetValueOrDefault(view.Path) };
    }

    private void Write(PropertySource source, string state, string? error, string? other)
    {
        _json.WriteStartObject();
        _json.WriteString("path", source.View.Path);
        _json.WriteBoolean("folder", source.View.IsFolder);
        _json.WriteString("state", state);
        if (error is not null)
            _json.WriteString("error", error);
        if (source.LockedBy is { } user)
            _json.WriteString("lockedBy", user);
        if (other is not null)
            _json.WriteString("conflictOf", other);
        if (Conflicts.SideOf(source) is { } side)
            _json.WriteString("conflictFrom", side);
        _json.WriteEndObject();
    }

    // Few files are locked, and finding the record of an item means looking at it again.
    private static Dictionary<string, string> LocksOf(PropertySource top)
    {
        var locks = new Dictionary<string, string>(RelativePath.Comparer);
        if (!top.Drive.Locking)
            return locks;
        var tracker = new ItemTracker(top.Drive, top.Index.Items);
        foreach (var record in top.Index.Items.Records)
        {
            if (record.LockedBy is { } user && tracker.PathOf(record) is { } path)
                locks[path] = user;
        }
        return locks;
    }
}
