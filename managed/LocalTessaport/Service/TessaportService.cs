namespace Quorvex.Tessaport.API;

/// <summary>
/// A sync service whose drives are plain folders. Objects have no state, so any number of them may be used from any thread.
/// </summary>
public partial class TessaportService
{
    public TessaportService()
    {
    }

    /// <summary>The window is ignored: this service shows no dialogs.</summary>
    public TessaportService(IntPtr windowHandle)
    {
    }

    public void Discover() => RequestScope.Begin();

    public string GetVersion()
    {
        RequestScope.Begin();
        return typeof(TessaportService).Assembly.GetName().Version!.ToString(3);
    }

    public IEnumerable<Drive> GetDrives() => RequestScope.Begin().Drives.Drives.Select(Describe).ToList();

    private static Drive Describe(LocalDrive drive) => new()
    {
        Id = drive.Id,
        Name = drive.Name,
        DriveType = drive.Type,
        WorkspaceLocation = drive.WorkspaceLocation,
        Root = ItemView.OfRoot(drive).ToItem(),
        DriveCapabilites = new DriveCapabilites { Locking = drive.Locking },
    };
}
