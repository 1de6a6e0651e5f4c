namespace Quorvex.Tessaport.API.Local;

/// <summary>Finds the items that permanent ids name, wherever they were moved.</summary>
internal sealed class PermanentIdLookup
{
    private readonly RequestScope _request;
    private readonly TrackerSet _trackers;
    private readonly HashSet<(LocalDrive Drive, string Path)> _moved = [];

    public PermanentIdLookup(RequestScope request)
    {
        _request = request;
        _trackers = new TrackerSet(request);
    }

    public PermanentIdToItemResult Find(string? text)
    {
        var drive = PermanentId.TryParse(text) is { } id ? _request.Drives.Find(id.Drive) : null;
        var view = drive is { Offline: false } ? Find(drive, PermanentId.TryParse(text)!.Value) : null;
        return new PermanentIdToItemResult
        {
            PermanentId = text ?? "",
            Item = view?.ToItem()!,
            Result = drive is { Offline: true } ? Results.Offline
                : view is null ? Results.NotFound
                : Results.Success,
        };
    }

    /// <summary>
    /// Saves the new paths of items that were found moved, so that they are still found after the next change of the file.
    /// The lookup itself does not depend on it.
    /// </summary>
    public void RememberMoves()
    {
        if (_moved.Count == 0)
            return;
        try
        {
            using var scope = new ChangeScope(_request.Home);
            foreach (var (drive, path) in _moved)
            {
                var edit = scope.Edit(drive);
                if (edit.At(path) is { Exists: true } view)
                    edit.Record(view);
            }
            scope.Save();
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    private ItemView? Find(LocalDrive drive, PermanentId id)
    {
        if (id.IsRoot)
            return ItemView.At(drive, RelativePath.Root);
        if (IndexStore.Load(_request.Home, drive.Id).Items.ByKey(id.Token) is not { } record)
            return null;
        if (_trackers.Of(drive).PathOf(record) is not { } path)
            return null;
        if (path != record.Path)
            _moved.Add((drive, path));
        return ItemView.At(drive, path);
    }
}
