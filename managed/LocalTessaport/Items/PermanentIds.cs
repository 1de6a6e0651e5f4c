namespace Quorvex.Tessaport.API.Local;

/// <summary>Finds the permanent ids of items and creates missing ones.</summary>
internal static class PermanentIds
{
    /// <summary>The permanent id of each item that exists, in the given order; null for the others.</summary>
    public static List<PermanentId?> Of(RequestScope request, IReadOnlyList<ItemView> views)
    {
        var found = new List<PermanentId?>(views.Count);
        var missing = new List<int>();
        var trackers = new TrackerSet(request);
        foreach (var view in views)
        {
            PermanentId? known = null;
            if (view.IsRoot)
                known = PermanentId.OfRoot(view.Drive.Id);
            else if (view.Exists && trackers.Of(view.Drive).RecordOf(view) is { } record && record == record.SeenIn(view))
                known = new PermanentId(view.Drive.Id, record.Key);
            else if (view.Exists)
                missing.Add(found.Count);
            found.Add(known);
        }
        if (missing.Count > 0)
            Make(request, views, missing, found);
        return found;
    }

    private static void Make(RequestScope request, IReadOnlyList<ItemView> views, List<int> missing, List<PermanentId?> found)
    {
        using var scope = new ChangeScope(request.Home);
        foreach (var i in missing)
        {
            var view = views[i];
            found[i] = new PermanentId(view.Drive.Id, scope.Edit(view.Drive).Record(view).Key);
        }
        // An id is only useful if it is still known after a restart.
        scope.Save();
    }
}
