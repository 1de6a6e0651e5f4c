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
        items.ListAll(items.List);
    });

    /// <summary>The same for what the patterns of the drive leave out; of a folder that is left out, only the folder.</summary>
    public static string DescribeLeftOut(PropertySource top) => JsonList.Make(json =>
    {
        var items = new PendingItems(top, json);
        items.ListAll(items.ListLeftOut);
    });

    /// <param name="list">Lists one item if it belongs in the list; false if nothing that is in it does.</param>
    private void ListAll(Predicate<SnapshotNode> list)
    {
        var pending = new Stack<SnapshotNode>();
        pending.Push(DriveSnapshot.Take(_top.Drive, _top.View.Path).Top);
        while (pending.TryPop(out var node))
        {
            if (!list(node))
                continue;
            var children = node.Children();
            for (var i = children.Count - 1; i >= 0; --i)
                pending.Push(children[i]);
        }
    }

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
