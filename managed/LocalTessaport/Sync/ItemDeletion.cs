namespace Quorvex.Tessaport.API.Local;

/// <summary>Deletes items on both sides, folders with everything in them.</summary>
internal sealed class ItemDeletion
{
    private readonly ChangeReport _report;
    private readonly List<DrivePlace> _deleted = [];

    public ItemDeletion(ChangeReport report) => _report = report;

    public void Delete(DriveEdit edit, string path)
    {
        var view = edit.At(path);
        if (!view.Exists && WentBefore(edit.Drive, path))
        {
            _report.Deleted(view);
            return;
        }
        LeftOut.RequireNot(view);
        LeftOut.RequireNothingIn(view);
        Delete(edit, view);
    }

    /// <summary>Deletes an item if it still is what was seen.</summary>
    /// <exception cref="ChangedException">It is not. What is there now stays.</exception>
    public void Delete(DriveEdit edit, ItemView view)
    {
        RequireDeletable(edit, view);
        // The server first, so that a kill leaves the user's own copy.
        MoveAside(edit.Drive.Server, view.Server, view.Path);
        MoveAside(edit.Drive.Workspace, view.Workspace, view.Path);
        edit.Index.Remove(view.Path);
        edit.Tracker.Reset();
        _deleted.Add(new DrivePlace(edit.Drive, view.Path));
        _report.Deleted(view);
    }

    private bool WentBefore(LocalDrive drive, string path) => _deleted.Any(
        place => place.Drive == drive && (place.Path == path || RelativePath.IsInside(path, place.Path)));

    private static void RequireDeletable(DriveEdit edit, ItemView view)
    {
        edit.Drive.RequireWritable();
        if (view.IsRoot)
            throw new UnauthorizedAccessException($"The root of the drive '{edit.Drive.Name}' cannot be deleted.");
        if (!view.Exists)
            throw new FileNotFoundException($"'{edit.Drive.WorkspacePathOf(view.Path)}' no longer exists.");
        if (FileLocks.IsHeldInside(edit, view))
            throw new UnauthorizedAccessException($"'{edit.Drive.WorkspacePathOf(view.Path)}' is or holds a locked file; unlock it first.");
    }

    private static void MoveAside(DriveSide side, FileEntry? entry, string path)
    {
        if (entry is { } found)
            side.MoveAside(path, found);
    }
}
