namespace Quorvex.Tessaport.API.Local;

/// <summary>Decides which version of a file goes to the other side, or that both are kept.</summary>
internal sealed class VersionSync
{
    private readonly DriveEdit _edit;
    private readonly ITransfers _transfers;
    private readonly ISyncSteps _steps;
    private readonly SyncProgress _progress;
    private readonly ChangeReport _report;

    public VersionSync(DriveEdit edit, ITransfers transfers, SyncProgress progress, ChangeReport report, ISyncSteps steps)
    {
        _edit = edit;
        _transfers = transfers;
        _progress = progress;
        _report = report;
        _steps = steps;
    }

    public void Sync(SnapshotNode node, FileEntry local, FileEntry remote)
    {
        var path = node.Path;
        var last = _edit.Index.Synced.ByPath(path);
        var here = VersionCheck.Compare(local, last, SideName.Workspace);
        var there = VersionCheck.Compare(remote, last, SideName.Server);
        if (here == VersionState.Synced && there == VersionState.Synced)
            return;
        if (last is not null)
        {
            here = Resolve(node, path, last, SideName.Workspace, here);
            there = Resolve(node, path, last, SideName.Server, there);
        }
        switch (here, there)
        {
            case (VersionState.Synced, VersionState.Synced):
                break;
            case (VersionState.Synced, VersionState.Changed):
                _transfers.Add(node, SideName.Server);
                break;
            case (VersionState.Changed, VersionState.Synced):
                _transfers.Add(node, SideName.Workspace);
                break;
            case (VersionState.Synced, VersionState.Unsure):
                if (!RecordIfEqual(node, path))
                    _transfers.Add(node, SideName.Server);
                break;
            case (VersionState.Unsure, VersionState.Synced):
                if (!RecordIfEqual(node, path))
                    _transfers.Add(node, SideName.Workspace);
                break;
            default:
                if (!RecordIfEqual(node, path))
                    KeepBoth(node, path);
                break;
        }
    }

    /// <summary>Reads a file whose content alone shows whether it is the version that was last synced.</summary>
    private VersionState Resolve(SnapshotNode node, string path, SyncedRecord last, SideName side, VersionState state)
    {
        if (state != VersionState.Unsure || !last.Hash.IsKnown)
            return state;
        var hash = FileContent.Hash(_steps.FileAt(side, node), out var seen);
        node[side] = seen;
        if (ContentHash.Parse(hash) != last.Hash)
            return VersionState.Changed;
        var stamp = SeenVersion.Now(seen).Stamp;
        var current = _edit.Index.Synced.ByPath(path) ?? last;
        var record = side == SideName.Workspace
            ? current with { LocalStamp = stamp, Local = seen.Identity }
            : current with { RemoteStamp = stamp, Remote = seen.Identity };
        _steps.Record(record, _edit.ViewOf(node, path));
        return VersionState.Synced;
    }

    private bool RecordIfEqual(SnapshotNode node, string path)
    {
        var areEqual = FileContent.AreEqual(
            _steps.FileAt(SideName.Workspace, node), _steps.FileAt(SideName.Server, node), out var local, out var remote);
        (node[SideName.Workspace], node[SideName.Server]) = (local, remote);
        if (areEqual)
        {
            var record = SyncedRecord.ForEqual(path, SeenVersion.Now(local), SeenVersion.Now(remote), _steps.FileAt(SideName.Workspace, node));
            _steps.Record(record, _edit.ViewOf(node, path));
        }
        return areEqual;
    }

    // The newer version keeps the name; the older one is kept beside it before it is replaced.
    private void KeepBoth(SnapshotNode node, string path)
    {
        var (local, remote) = (node[SideName.Workspace]!.Value, node[SideName.Server]!.Value);
        var newer = local.Modified >= remote.Modified ? SideName.Workspace : SideName.Server;
        var older = newer.Opposite();
        var copy = _steps.KeepCopy(node, path, older);
        _progress.Worked();
        _report.Created(copy);
        _transfers.Add(node, newer);
    }
}
