namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Settles conflicts, in which a sync kept one version of a file under its name and the other one as a copy beside it. A version that was
/// changed since the last sync is neither replaced nor deleted.
/// </summary>
internal static class ConflictSettlement
{
    /// <summary>Puts a copy in the place of the other version, in one step on each side, and then deletes the copy.</summary>
    public static void Use(DriveEdit edit, ChangeReport report, string copy)
    {
        var (kept, replaced) = RequireUnchanged(edit, copy);
        RequireUnlocked(edit, replaced);
        FileTransfer.PutOnBothSides(edit, edit.Drive.Workspace.At(kept.Path), replaced, kept.Workspace);
        // Otherwise a power failure could undo this, and not the deletion of the copy.
        foreach (var side in SideNames.Both)
            DriveFlush.Names(edit.Drive.Side(side), RelativePath.FolderOf(replaced.Path));
        Step.Reached("Settle.Placed", copy);
        edit.Index.Failures.Remove(replaced.Path);
        report.Updated(edit.At(replaced.Path));
        new ItemDeletion(report).Delete(edit, kept);
    }

    /// <summary>Deletes a copy.</summary>
    public static void Discard(DriveEdit edit, ChangeReport report, string copy)
    {
        var (discarded, _) = RequireUnchanged(edit, copy);
        new ItemDeletion(report).Delete(edit, discarded);
    }

    /// <summary>Leaves both versions as two ordinary files.</summary>
    public static void KeepBoth(DriveEdit edit, ChangeReport report, string copy)
    {
        edit.Drive.RequireOnline();
        RequireOther(edit, copy);
        edit.Index.Synced.Put(edit.Index.Synced.ByPath(copy)! with { Conflict = null });
        edit.Index.Failures.Remove(copy);
        report.Updated(edit.At(copy));
    }

    private static (ItemView Copy, ItemView Other) RequireUnchanged(DriveEdit edit, string copy)
    {
        edit.Drive.RequireWritable();
        var other = RequireOther(edit, copy);
        var versions = (Copy: RequireInSync(edit, copy), Other: RequireInSync(edit, other));
        RequireUnlocked(edit, versions.Copy);
        Step.Reached("Settle.Checked", copy);
        RequireSame(edit, versions.Copy);
        RequireSame(edit, versions.Other);
        return versions;
    }

    private static string RequireOther(DriveEdit edit, string copy) => Conflicts.OtherOf(edit.Drive, edit.Index.Synced.ByPath(copy))
        ?? throw new IOException($"'{edit.Drive.WorkspacePathOf(copy)}' is not a version that was kept in a conflict.");

    private static ItemView RequireInSync(DriveEdit edit, string path)
    {
        var view = edit.At(path);
        return SyncStates.IsEqual(view, edit.Index.Synced.ByPath(path))
            ? view
            : throw new IOException($"'{edit.Drive.WorkspacePathOf(path)}' has changed since the last sync. Sync it, look at both versions and try again.");
    }

    private static void RequireSame(DriveEdit edit, ItemView seen)
    {
        foreach (var side in SideNames.Both)
        {
            if (edit.Drive.Side(side).Find(seen.Path) is not { } now || !now.IsUnchangedSince(seen.On(side)!.Value))
                throw new ChangedException(edit.Drive.Side(side).PathOf(seen.Path));
        }
    }

    private static void RequireUnlocked(DriveEdit edit, ItemView view)
    {
        if (FileLocks.IsHeldInside(edit, view))
            throw new UnauthorizedAccessException($"'{edit.Drive.WorkspacePathOf(view.Path)}' is locked; unlock it first.");
    }
}
