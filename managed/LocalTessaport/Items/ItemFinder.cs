namespace Quorvex.Tessaport.API.Local;

/// <summary>Finds items by path, in one request.</summary>
internal sealed class ItemFinder
{
    private readonly Dictionary<(string, string), string> _properPaths = [];

    /// <summary>The item at a place, named as it is spelled on the disk; null if it does not exist.</summary>
    public ItemView? Find(DrivePlace place)
    {
        var view = ItemView.At(place.Drive, place.Path);
        if (!view.Exists && !view.IsRoot)
            return null;
        return ReferenceEquals(RelativePath.Comparer, System.StringComparer.Ordinal) ? view : view with { Path = Respell(view) };
    }

    private string Respell(ItemView view)
    {
        var side = view.Workspace is not null ? view.Drive.Workspace : view.Drive.Server;
        var spelled = RelativePath.Root;
        foreach (var part in view.Path.Split('\\', System.StringSplitOptions.RemoveEmptyEntries))
            spelled = ProperPath(side, RelativePath.Join(spelled, part));
        return spelled;
    }

    private string ProperPath(DriveSide side, string path)
    {
        if (_properPaths.TryGetValue((side.Root, path), out var known))
            return known;
        return _properPaths[(side.Root, path)] = RelativePath.Join(RelativePath.FolderOf(path), side.SpellingOf(path));
    }
}
