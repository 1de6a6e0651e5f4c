namespace Quorvex.Tessaport.API.Local;

/// <summary>Decides which version of a file goes to the other side, or that both are kept.</summary>
internal sealed class VersionSync(
    DriveEdit edit, ITransfers transfers, SyncProgress progress, ChangeReport report, ISyncSteps steps)
{
    public void Sync(SnapshotNode node, FileEntry local, FileEntry remote)
    {
        var path = node.Path;
        var last = edit.Index.Synced.ByPath(path);
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
                transfers.Add(node, SideName.Server);
                break;
            case (VersionState.Changed, VersionState.Synced):
                transfers.Add(node, SideName.Workspace);
                break;
            case (VersionState.Synced, VersionState.Unsure):
                if (!RecordIfEqual(node, path))
                    transfers.Add(node, SideName.Server);
                break;
            case (VersionState.Unsure, VersionState.Synced):
                if (!RecordIfEqual(node, path))
                    transfers.Add(node, SideName.Workspace);
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
        var hash = FileContent.Hash(steps.FileAt(side, node), out var seen);
        node[side] = seen;
        if (ContentHash.Parse(hash) != last.Hash)
            return VersionState.Changed;
        var stamp = SeenVersion.Now(seen).Stamp;
        var current = edit.Index.Synced.ByPath(path) ?? last;
        var record = side == SideName.Workspace
            ? current with { LocalStamp = stamp, Local = seen.Identity }
            : current with { RemoteStamp = stamp, Remote = seen.Identity };
        steps.Record(record, edit.ViewOf(node, path));
        return VersionState.Synced;
    }

    private bool RecordIfEqual(SnapshotNode node, string path)
    {
        var areEqual = FileContent.AreEqual(
            steps.FileAt(SideName.Workspace, node), steps.FileAt(SideName.Server, node), out var local, out var remote);
        (node[SideName.Workspace], node[SideName.Server]) = (local, remote);
        if (areEqual)
        {
            var record = SyncedRecord.ForEqual(path, SeenVersion.Now(local), SeenVersion.Now(remote), steps.FileAt(SideName.Workspace, node));
            steps.Record(record, edit.ViewOf(node, path));
        }
        return areEqual;
    }

    // The newer version keeps the name; the older one is kept beside it before it is replaced.
    private void KeepBoth(SnapshotNode node, string path)
    {
        var (local, remote) = (node[SideName.Workspace]!.Value, node[SideName.Server]!.Value);
        var newer = local.Modified >= remote.Modified ? SideName.Workspace : SideName.Server;
        var older = newer.Opposite();
        var copy = steps.KeepCopy(node, path, older);
        progress.Worked();
        report.Created(copy);
        transfers.Add(node, newer);
    }
}
