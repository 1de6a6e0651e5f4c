namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<ItemIdToPermanentIdResult> GetPermanentIds(List<ItemId> ids)
    {
        ArgumentNullException.ThrowIfNull(ids);
        var request = RequestScope.Begin();
        var places = ids.ConvertAll(request.TryPlaceOf);
        var reachable = places.OfType<DrivePlace>().Where(place => !place.Drive.Offline)
            .Select(place => ItemView.At(place.Drive, place.Path)).ToList();
        var found = new Queue<PermanentId?>(PermanentIds.Of(request, reachable));
        return ids.Select((id, i) => Answer(id, places[i], found)).ToList();
    }

    public IEnumerable<PermanentIdToItemResult> GetItemsByPermanentIds(List<string> permanentIds)
    {
        ArgumentNullException.ThrowIfNull(permanentIds);
        var lookup = new PermanentIdLookup(RequestScope.Begin());
        var results = permanentIds.ConvertAll(lookup.Find);
        lookup.RememberMoves();
        return results;
    }

    private static ItemIdToPermanentIdResult Answer(ItemId id, DrivePlace? place, Queue<PermanentId?> found)
    {
        if (place is { Drive.Offline: true })
            return new ItemIdToPermanentIdResult { ItemId = id, Result = Results.Offline };
        var permanentId = place is null ? null : found.Dequeue();
        return new ItemIdToPermanentIdResult
        {
            ItemId = id,
            PermanentId = permanentId?.ToString()!,
            Result = permanentId is null ? Results.NotFound : Results.Success,
        };
    }
}
