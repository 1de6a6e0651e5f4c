namespace Quorvex.Tessaport.API.Local;

/// <summary>Finds a folder below another one by its name or path, and creates it on each side on which it does not exist.</summary>
internal static class FolderCreation
{
    public static ItemView GetOrCreate(RequestScope request, DrivePlace parent, string? name)
    {
        FolderListing.RequireFolder(ItemView.At(parent.Drive, parent.Path));
        var path = PathBelow(parent.Path, name);
        var found = new ItemFinder().Find(parent with { Path = path });
        return found is { IsFolder: true } folder && !IsToBeCompleted(folder) ? folder : Create(request, parent.Drive, path);
    }

    // A folder on one side is there: where nothing can be created on the other one, it is the answer and no failure.
    private static bool IsToBeCompleted(ItemView folder) =>
        (folder.Workspace is null || folder.Server is null)
        && folder.Drive.AcceptsChanges && folder.Drive.Ignored?.PatternFor(folder.Path, isFolder: true) is null;

    private static string PathBelow(string parent, string? name)
    {
        if (RelativePath.TryParse(name) is not { Length: > 0 } below)
            throw new ArgumentException($"'{name}' is not the name of a folder.");
        foreach (var part in below.Split('\\'))
        {
            if (!NameRules.CanBeAdded(part))
                throw new ArgumentException(
                    $"'{part}' cannot be the name of a folder: avoid < > : \" | ? *, a dot or a space at the end, the names of devices, "
                    + "and more than 255 characters.");
        }
        return RelativePath.Join(parent, below);
    }

    private static void RequireNotLeftOut(LocalDrive drive, string path)
    {
        if (drive.Ignored?.PatternFor(path, isFolder: true) is { } pattern)
            throw new IOException($"'{drive.WorkspacePathOf(path)}' would be left out by the pattern '{pattern}' of the drive; remove the pattern first.");
    }

    private static ItemView Create(RequestScope request, LocalDrive drive, string path)
    {
        drive.RequireWritable();
        using var scope = new ChangeScope(request.Home);
        var edit = scope.Edit(drive);
        RequireNotLeftOut(edit.Drive, path);
        FolderMaker.Make(edit, path);
        scope.Save();
        return edit.At(path);
    }
}
