using System.Collections.Generic;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Takes stock of a drive that is seen for the first time: what is equal on both sides counts as synced, so that a later
/// change of one side can be told from a change of both.
/// </summary>
internal static class Inventory
{
    public static ItemIndex Take(LocalDrive drive)
    {
        var index = new ItemIndex();
        foreach (var (path, local) in DriveScan.Walk(drive.Workspace))
        {
            if (drive.Server.Find(path) is not { } remote || remote.IsFolder != local.IsFolder)
                continue;
            var view = new ItemView(drive, path, local.Identity.IsKnown ? local : drive.Workspace.Find(path), remote);
            if (local.IsFolder || AreEqual(view, local, remote))
                index.Put(ItemRecord.For(view) with { Synced = new SyncedVersion(local, remote) });
        }
        return index;
    }

    private static bool AreEqual(ItemView view, FileEntry local, FileEntry remote) =>
        local.Size == remote.Size
        && (local.Modified == remote.Modified
            || FileContent.AreEqual(view.Drive.Workspace.PathOf(view.Path), view.Drive.Server.PathOf(view.Path)));
}
