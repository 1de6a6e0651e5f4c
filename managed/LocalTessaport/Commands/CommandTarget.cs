namespace Quorvex.Tessaport.API.Local;

/// <summary>The items for which commands are listed or run.</summary>
internal sealed class CommandTarget
{
    private CommandTarget(RequestScope request, List<ItemView> views)
    {
        Request = request;
        Views = views;
    }

    public RequestScope Request { get; }

    /// <summary>The items of the context that exist, each once.</summary>
    public List<ItemView> Views { get; }

    public static CommandTarget Of(RequestScope request, CommandContext context)
    {
        var ids = new List<ItemId>(context.Items ?? []);
        if (context.Item is not null)
            ids.Insert(0, context.Item);
        var views = ids.Select(request.TryPlaceOf).OfType<DrivePlace>().Distinct()
            .Select(place => ItemView.At(place.Drive, place.Path))
            .Where(view => view.Exists || view.IsRoot);
        return new CommandTarget(request, views.ToList());
    }

    public bool AreLocked() => LocksOf().All(isLocked => isLocked);

    public bool AreAnyLocked() => LocksOf().Any(isLocked => isLocked);

    /// <summary>Whether each of them is a version that was kept in a conflict.</summary>
    public bool AreConflictCopies() => Views.All(view =>
        Conflicts.OtherOf(view.Drive, IndexStore.Load(Request.Home, view.Drive.Id).Synced.ByPath(view.Path)) is not null);

    private IEnumerable<bool> LocksOf()
    {
        var trackers = new TrackerSet(Request);
        return Views.Select(view => view.Drive.Locking && trackers.Of(view.Drive).RecordOf(view)?.LockedBy is not null);
    }
}
