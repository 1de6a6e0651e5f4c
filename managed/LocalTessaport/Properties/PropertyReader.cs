namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads properties of many items.</summary>
internal static class PropertyReader
{
    /// <param name="request">The request.</param>
    /// <param name="views">The items.</param>
    /// <param name="actions">For each item, what was done with it according to its id.</param>
    /// <param name="properties">The properties to read.</param>
    public static List<PropertyValue> Read(
        RequestScope request, List<ItemView> views, List<string?> actions, List<Property> properties)
    {
        var ids = properties.Any(property => property.NeedsIds) ? FindIds(request, views) : null;
        var trackers = new TrackerSet(request);
        var values = new List<PropertyValue>(views.Count * properties.Count);
        for (var i = 0; i < views.Count; ++i)
            Read(SourceFor(request, views[i], actions[i], ids, trackers), properties, values);
        return values;
    }

    /// <summary>Reads properties whose values the ids of the items carry.</summary>
    public static List<PropertyValue> ReadFromIds(RequestScope request, List<ItemId> ids, List<Property> properties)
    {
        var values = new List<PropertyValue>(ids.Count * properties.Count);
        foreach (var id in ids)
        {
            if (request.TryPlaceOf(id) is not { Drive.Offline: false } place)
                continue;
            foreach (var property in properties)
            {
                if (property.InId!(id) is { } value)
                    values.Add(property.ValueOf(place, value));
            }
        }
        return values;
    }

    private static void Read(PropertySource source, List<Property> properties, List<PropertyValue> values)
    {
        foreach (var property in properties)
        {
            if (!property.AppliesTo(source.Drive) || (source.Drive.Offline && !property.IsKnownOffline)
                || property.Read(source) is not { } value)
                continue;
            values.Add(property.ValueOf(new DrivePlace(source.Drive, source.View.Path), value));
        }
    }

    private static PropertySource SourceFor(
        RequestScope request, ItemView view, string? action, Dictionary<DrivePlace, PermanentId>? ids, TrackerSet trackers) =>
        new(view, IndexStore.Load(request.Home, view.Drive.Id))
        {
            Id = ids is null ? null : Find(ids, new DrivePlace(view.Drive, view.Path)),
            ParentId = ids is null || view.IsRoot ? null : Find(ids, ParentOf(view)),
            LockedBy = view.Drive.Locking ? trackers.Of(view.Drive).RecordOf(view)?.LockedBy : null,
            Action = action,
            UpkeepFailure = view.IsRoot ? Upkeep.FailureOf(request.Home, view.Drive.Id) : null,
        };

    private static Dictionary<DrivePlace, PermanentId> FindIds(RequestScope request, List<ItemView> views)
    {
        var ids = new Dictionary<DrivePlace, PermanentId>();
        var places = views.Select(view => new DrivePlace(view.Drive, view.Path))
            .Concat(views.Where(view => !view.IsRoot).Select(ParentOf))
            .Distinct().ToList();
        var found = PermanentIds.Of(request, places.ConvertAll(ItemView.ToDescribe));
        for (var i = 0; i < places.Count; ++i)
        {
            if (found[i] is { } id)
                ids[places[i]] = id;
        }
        return ids;
    }

    private static DrivePlace ParentOf(ItemView view) => new(view.Drive, RelativePath.FolderOf(view.Path));

    private static PermanentId? Find(Dictionary<DrivePlace, PermanentId> ids, DrivePlace place) =>
        ids.TryGetValue(place, out var id) ? id : null;
}
