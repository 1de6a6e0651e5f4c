namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Drives whose roots are kept open while a request looks at many items: opening a root takes longer than looking at a file in it.
/// </summary>
internal sealed class OpenedDrives : IDisposable
{
    private readonly Dictionary<Guid, LocalDrive> _opened = [];

    /// <summary>The same drive; it may be used until this is disposed.</summary>
    public LocalDrive Of(LocalDrive drive)
    {
        if (!_opened.TryGetValue(drive.Id, out var opened))
            _opened[drive.Id] = opened = drive.Opened();
        return opened;
    }

    public DrivePlace At(DrivePlace place) => place with { Drive = Of(place.Drive) };

    public void Dispose()
    {
        foreach (var drive in _opened.Values)
            drive.Dispose();
    }
}
