using System.Runtime.CompilerServices;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What one request works with: the home of a running service, and the drives as configured now.</summary>
internal sealed class RequestScope
{
    private RequestScope(HomeFolder home, DriveList drives)
    {
        Home = home;
        Drives = drives;
    }

    public HomeFolder Home { get; }
    public DriveList Drives { get; }

    /// <summary>Lets a request begin that needs no drives.</summary>
    /// <param name="method">The method of the service that begins the request.</param>
    public static HomeFolder Enter([CallerMemberName] string method = "")
    {
        var home = HomeFolder.Locate();
        RequestGate.Pass(home, method);
        return home;
    }

    /// <summary>Lets a request begin, with the drives as configured now.</summary>
    /// <param name="method">The method of the service that begins the request.</param>
    public static RequestScope Begin([CallerMemberName] string method = "")
    {
        var home = Enter(method);
        var request = new RequestScope(home, DriveFile.Load(home));
        // Nothing is made for drives that are only proposed.
        if (home.ProposedDrivesFile is null)
            Upkeep.RunIfDue(request);
        return request;
    }

    /// <summary>The place that an id names; null if the drive no longer exists.</summary>
    public DrivePlace? TryPlaceOf(ItemId? id)
    {
        if (id?.Path is null)
            throw new ArgumentException(id is null
                ? "An item id is missing; use one from an item that this service returned."
                : "An item id was not made by this service; use one from an item that it returned.");
        return Drives.Find(id.Drive) is { } drive ? new DrivePlace(drive, id.Path) : null;
    }

    public DrivePlace PlaceOf(ItemId? id) => TryPlaceOf(id)
        ?? throw new ArgumentException($"There is no drive '{id!.Drive}' any more; list the drives again.");

    public LocalDrive DriveOf(Guid id) => Drives.Find(id)
        ?? throw new ArgumentException($"There is no drive with the id '{id}'; list the drives to see which exist.");
}
