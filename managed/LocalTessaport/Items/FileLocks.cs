namespace Quorvex.Tessaport.API.Local;

/// <summary>Locks on files: a mark with the user's name that keeps a file from being deleted.</summary>
internal static class FileLocks
{
    public static bool CanLock(ItemView view) => view.Drive.Locking && view.Drive.AcceptsChanges && view.Exists && !view.IsFolder;

    public static bool IsHeldInside(DriveEdit edit, ItemView view) =>
        edit.Tracker.RecordOf(view)?.LockedBy is not null
        || (view.IsFolder && edit.Index.Items.Records
            .Where(record => record.LockedBy is not null)
            .Select(edit.Tracker.PathOf)
            .Any(path => path is not null && RelativePath.IsInside(path, view.Path)));

    public static void Lock(DriveEdit edit, ItemView view) => Set(edit, view, Environment.UserName);

    public static void Unlock(DriveEdit edit, ItemView view) => Set(edit, view, null);

    private static void Set(DriveEdit edit, ItemView view, string? user)
    {
        if (!CanLock(view))
            throw new UnauthorizedAccessException($"'{view.Drive.WorkspacePathOf(view.Path)}' is not a file that can be locked now.");
        var record = edit.Record(view);
        edit.Index.Items.Put(record with { LockedBy = user is null ? null : record.LockedBy ?? user });
    }
}
