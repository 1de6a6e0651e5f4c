namespace Quorvex.Tessaport.API.Local;

/// <summary>Makes both sides of the items of a snapshot equal, once.</summary>
internal sealed class SyncPass
{
    private readonly DriveEdit _edit;
    private readonly DriveSnapshot _snapshot;
    private readonly SyncProgress _progress;
    private readonly ChangeReport _report;
    private readonly ISyncSteps _steps;
    private readonly ITransfers _transfers;
    private readonly VersionSync _versions;

    public SyncPass(DriveEdit edit, DriveSnapshot snapshot, SyncProgress progress, ChangeReport report, ISyncSteps steps)
    {
        _edit = edit;
        _snapshot = snapshot;
        _progress = progress;
        _report = report;
        _steps = steps;
        _transfers = steps.Transfers(progress, report);
        _versions = new VersionSync(edit, _transfers, progress, report, steps);
    }

    /// <summary>Syncs the requested item with everything in it; an item that fails does not prevent the others.</summary>
    public void Run()
    {
        using (_transfers)
            SyncAll();
    }

    private void SyncAll()
    {
        foreach (var folder in _snapshot.Above())
        {
            if (_progress.IsBlocked(folder) || !_progress.Attempt(folder.Path, () => Sync(folder)))
                return;
        }
        var pending = new Stack<SnapshotNode>();
        pending.Push(_snapshot.Top);
        while (pending.TryPop(out var node))
        {
            if (node.LeftOutBy is not null || _progress.IsBlocked(node) || !_progress.Attempt(node.Path, () => Sync(node)) || !node.IsFolderOnEither)
                continue;
            var children = node.Children();
            for (var i = children.Count - 1; i >= 0; --i)
                pending.Push(children[i]);
        }
        _transfers.Flush();
    }

    private void Sync(SnapshotNode node)
    {
        var (local, remote) = (node[SideName.Workspace], node[SideName.Server]);
        if (node.Unreadable is { } reason)
            throw new IOException(reason);
        if (node.IsRoot || (local is null && remote is null))
            return;
        if (local is { } here && remote is { } there && here.IsFolder != there.IsFolder)
            throw new IOException($"'{_edit.Drive.WorkspacePathOf(node.Path)}' is a file on one side and a folder on the other; rename one.");
        if (node.IsFolderOnEither)
            SyncFolder(node);
        else if (remote is null)
            _transfers.Add(node, SideName.Workspace);
        else if (local is null)
            _transfers.Add(node, SideName.Server);
        else
            _versions.Sync(node, local.Value, remote.Value);
    }

    private void SyncFolder(SnapshotNode node)
    {
        foreach (var side in SideNames.Both)
        {
            if (node[side] is not null)
                continue;
            _steps.MakeFolder(node, side);
            _progress.Worked();
            _report.Updated(_edit.ViewOf(node, node.Path), SyncActions.From(side.Opposite()));
        }
        var path = node.Path;
        var record = SyncedRecord.ForFolder(path, node[SideName.Workspace]!.Value, node[SideName.Server]!.Value);
        _steps.Record(record, _edit.ViewOf(node, path));
    }
}
