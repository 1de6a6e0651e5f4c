namespace Quorvex.Tessaport.API.Local;

/// <summary>Trackers over the saved records, one per drive, for requests that only read.</summary>
internal sealed class TrackerSet
{
    private readonly RequestScope _request;
    private readonly Dictionary<Guid, ItemTracker> _trackers = [];

    public TrackerSet(RequestScope request) => _request = request;

    public ItemTracker Of(LocalDrive drive)
    {
        if (!_trackers.TryGetValue(drive.Id, out var tracker))
            _trackers[drive.Id] = tracker = new ItemTracker(drive, IndexStore.Load(_request.Home, drive.Id).Items);
        return tracker;
    }
}
