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
        RequestScope.Enter();
        return typeof(TessaportService).Assembly.GetName().Version!.ToString(3);
    }

    public IEnumerable<Drive> GetDrives()
    {
        // Not by System.Linq: a program that lists one folder would load it for this.
        var drives = new List<Drive>();
        foreach (var drive in RequestScope.Begin().Drives.Drives)
            drives.Add(Describe(drive));
        return drives;
    }

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
