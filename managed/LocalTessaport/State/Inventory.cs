namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Takes stock of a drive that is seen for the first time: what is equal on both sides counts as synced, so that a later
/// change of one side can be told from a change of both.
/// </summary>
internal static class Inventory
{
    public static DriveIndex Take(LocalDrive closed)
    {
        using var drive = closed.Opened();
        var index = new DriveIndex();
        foreach (var path in OnBothSides(drive))
        {
            if (ItemView.At(drive, path) is { Workspace: { } local, Server: { } remote } view && LeftOut.PatternFor(view) is null
                && AreEqual(view, local, remote))
                index.Synced.Put(ConflictCopy.Recognise(RecordOf(drive, path, local, remote), view));
        }
        return index;
    }

    private static IEnumerable<string> OnBothSides(LocalDrive drive)
    {
        var folders = new Stack<string>();
        folders.Push(RelativePath.Root);
        while (folders.TryPop(out var folder))
        {
            var remote = DriveScan.ReadIfAllowed(drive.Server, folder).Select(found => found.Name).ToHashSet(RelativePath.Comparer);
            // A new drive often has one empty side.
            if (remote.Count == 0)
                continue;
            foreach (var (name, entry) in DriveScan.ReadIfAllowed(drive.Workspace, folder))
            {
                if (!remote.Contains(name))
                    continue;
                var path = RelativePath.Join(folder, name);
                if (entry.IsFolder)
                    folders.Push(path);
                yield return path;
            }
        }
    }

    private static SyncedRecord RecordOf(LocalDrive drive, string path, FileEntry local, FileEntry remote) => local.IsFolder
        ? SyncedRecord.ForFolder(path, local, remote)
        : SyncedRecord.ForEqual(path, SeenVersion.Now(local), SeenVersion.Now(remote), drive.Workspace.At(path));

    private static bool AreEqual(ItemView view, FileEntry local, FileEntry remote) =>
        local.IsFolder == remote.IsFolder
        && (local.IsFolder || (local.Size == remote.Size && (local.Modified == remote.Modified || HoldSame(view))));

    private static bool HoldSame(ItemView view) =>
        FileContent.AreEqual(view.Drive.Workspace.At(view.Path), view.Drive.Server.At(view.Path));
}
