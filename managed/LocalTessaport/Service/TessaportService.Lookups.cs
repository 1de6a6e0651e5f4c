namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<WorkspacePathToItemResult> GetItemsByWorkspacePaths(List<string> paths)
    {
        ArgumentNullException.ThrowIfNull(paths);
        var drives = RequestScope.Begin().Drives;
        using var opened = new OpenedDrives();
        var finder = new ItemFinder();
        return paths.ConvertAll(path => Look(path, drives.Locate(path) is { } place ? opened.At(place) : null, finder));
    }

    public IEnumerable<Item> GetItemsByRelativePaths(Guid driveId, List<string> relativePaths)
    {
        ArgumentNullException.ThrowIfNull(relativePaths);
        using var drive = RequestScope.Begin().DriveOf(driveId).Opened();
        var finder = new ItemFinder();
        return relativePaths
            .Select(RelativePath.TryParse)
            .Select(path => path is null ? null : finder.Find(new DrivePlace(drive, path)))
            .OfType<ItemView>()
            .Select(view => view.ToItem())
            .ToList();
    }

    public Dictionary<string, bool> AreFilesInWorkspace(List<string> paths)
    {
        ArgumentNullException.ThrowIfNull(paths);
        var drives = RequestScope.Begin().Drives;
        using var opened = new OpenedDrives();
        var answers = new Dictionary<string, bool>(paths.Count);
        foreach (var path in paths)
        {
            var key = path ?? throw new ArgumentException("A path in the list is missing.");
            answers[key] = drives.Locate(key) is { } place && opened.Of(place.Drive).Workspace.Find(place.Path) is not null;
        }
        return answers;
    }

    private static WorkspacePathToItemResult Look(string path, DrivePlace? place, ItemFinder finder)
    {
        var view = place is { Drive.Offline: false } reachable ? finder.Find(reachable) : null;
        return new WorkspacePathToItemResult
        {
            WorkspacePath = path ?? "",
            Item = view?.ToItem()!,
            Result = place is { Drive.Offline: true } ? Results.Offline
                : view is null ? Results.NotFound
                : Results.Success,
        };
    }
}
