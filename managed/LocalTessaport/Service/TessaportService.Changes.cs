namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public bool CanAddFiles(ItemId folder, List<string> paths)
    {
        ArgumentNullException.ThrowIfNull(paths);
        var rules = new AdditionRules(RequestScope.Begin().PlaceOf(folder));
        return new ChangeReport().Attempt(() =>
        {
            rules.RequireOpenFolder();
            paths.ForEach(path => rules.RequireSource(path));
        });
    }

    public CommandResult AddFiles(ItemId folder, List<string> paths)
    {
        ArgumentNullException.ThrowIfNull(paths);
        var request = RequestScope.Begin();
        var place = request.PlaceOf(folder);
        FolderListing.RequireFolder(ItemView.At(place.Drive, place.Path));
        var rules = new AdditionRules(place);
        FileAddition? addition = null;
        return Batch.Run(request, paths, path => rules.ShownAt(path), (scope, report, path) =>
            (addition ??= new FileAddition(scope.Edit(place.Drive), report, rules)).Add(path));
    }

    public Item GetOrCreateFolder(ItemId parent, string name)
    {
        var request = RequestScope.Begin();
        return FolderCreation.GetOrCreate(request, request.PlaceOf(parent), name).ToItem();
    }

    public CommandResult SyncFiles(List<ItemId> ids)
    {
        ArgumentNullException.ThrowIfNull(ids);
        var request = RequestScope.Begin();
        return Batch.Run(request, ids.ConvertAll(request.TryPlaceOf), place => place, (scope, report, place) =>
            new ItemSync(scope.Edit(Require(place).Drive), report).SyncTree(Require(place).Path));
    }

    public CommandResult DeleteItems(List<ItemId> ids)
    {
        ArgumentNullException.ThrowIfNull(ids);
        var request = RequestScope.Begin();
        ItemDeletion? deletion = null;
        return Batch.Run(request, ids.ConvertAll(request.TryPlaceOf), place => place, (scope, report, place) =>
            (deletion ??= new ItemDeletion(report)).Delete(scope.Edit(Require(place).Drive), Require(place).Path));
    }

    public void FileClosedWithinRunningProcess(int processId, string path)
    {
        ArgumentException.ThrowIfNullOrEmpty(path);
        if (processId <= 0)
            throw new ArgumentException($"{processId} is not the number of a process.");
        var request = RequestScope.Begin();
        if (request.Drives.Locate(path) is not { Drive.Offline: false } place
            || place.Drive.Workspace.Find(place.Path) is not { IsFolder: false })
            return;
        using var scope = new ChangeScope(request.Home);
        try
        {
            var edit = scope.Edit(place.Drive);
            if (LeftOut.PatternFor(edit.At(place.Path)) is null)
                new ItemSync(edit, new ChangeReport()).SyncFile(place.Path);
        }
        finally
        {
            // The reason of a failure is saved as well.
            scope.Save();
        }
    }

    private static DrivePlace Require(DrivePlace? place) =>
        place ?? throw new FileNotFoundException("The drive of an item is gone; list the drives again.");
}
