#nullable disable
#if !LACKS_SERVICE
using System.Runtime.InteropServices;
using System.Threading;
using Vendor.Parts;

namespace Quorvex.Tessaport.API;

/// <summary>A sync application with two drives and the same items in every folder.</summary>
public class TessaportService
{
    private const int ItemsInAFolder = 5000;

    private static readonly Guid DriveId = new("01234567-89ab-cdef-0123-456789abcdef");

    public TessaportService() { }
    public TessaportService(IntPtr windowHandle) { }

    /// <summary>Leaves the memory as small as it gets.</summary>
    public void Discover()
    {
        GC.Collect();
        GC.WaitForPendingFinalizers();
        GC.Collect();
    }

    public string GetVersion() => typeof(TessaportService).Assembly.GetName().Version!.ToString();

    public IEnumerable<Drive> GetDrives() => new[] { NewDrive(Catalog.DriveName), NewDrive(Catalog.LocalizedName) };

#if !LACKS_METHOD
    public IEnumerable<Item> GetChildFolders(ItemId folder) =>
        throw new TessaportNotRunningException("The sync application is not running.");
#endif

    public IEnumerable<Item> GetFolderContents(ItemId folder) =>
        Enumerable.Range(0, ItemsInAFolder).Select(i => NewItem($"file {i}.txt", false, isOnServer: i > 0));

    public CommandResult AddFiles(ItemId folder, List<string> paths) => Done();
    public Item GetOrCreateFolder(ItemId parent, string name) => NewItem(name, true);
    public bool CanAddFiles(ItemId folder, List<string> paths) => true;

    // A native library of the vendor's has the answer.
    public Dictionary<string, bool> AreFilesInWorkspace(List<string> paths) =>
        paths.ToDictionary(path => path, _ => VendorAnswer() == 42);


    /// <summary>Takes half a minute, for tests that do not wait for it.</summary>
    public CommandResult SyncFiles(List<ItemId> ids)
    {
        Thread.Sleep(TimeSpan.FromSeconds(30));
        return Done();
    }

    public CommandResult DeleteItems(List<ItemId> ids) => Done();

    public IEnumerable<WorkspacePathToItemResult> GetItemsByWorkspacePaths(List<string> paths) => paths.Select(
        path => new WorkspacePathToItemResult { Item = NewItem("found", false), WorkspacePath = path, Result = Result.Success });

    public IEnumerable<Item> GetItemsByRelativePaths(Guid driveId, List<string> relativePaths) =>
        relativePaths.Select(path => NewItem(path, false));

    public void FileClosedWithinRunningProcess(int processId, string path) { }

    public IEnumerable<PropertyDefinition> GetPropertyDefinitions(Guid driveId) => Array.Empty<PropertyDefinition>();

    public PropertyValues GetProperties(List<ItemId> ids, List<string> propertyDefinitionIds) =>
        new() { Values = Array.Empty<PropertyValue>() };

    public IEnumerable<Command> GetCommands(CommandContext context) => new[] { new Command { Name = "Open", Id = "open" } };
    public CommandResult ExecuteCommand(Command command, CommandContext context) => Done();

    public IEnumerable<ItemIdToPermanentIdResult> GetPermanentIds(List<ItemId> ids) => ids.Select(
        id => new ItemIdToPermanentIdResult { ItemId = id, PermanentId = "permanent", Result = Result.Success });

    public IEnumerable<PermanentIdToItemResult> GetItemsByPermanentIds(List<string> permanentIds) => permanentIds.Select(
        id => new PermanentIdToItemResult { Item = NewItem("found", false), PermanentId = id, Result = Result.Success });

    [DllImport("velmora_vendor_native", EntryPoint = "vendorAnswer")]
    private static extern int VendorAnswer();

    private static CommandResult Done() => new() { IsSuccess = true };

    private static Drive NewDrive(string name) => new()
    {
        Id = DriveId,
        Name = name,
        DriveType = "Quorvex.DataSourceType.Drive",
#if !LACKS_PROPERTY
        WorkspaceLocation = $@"C:\{name}",
#endif
        DriveCapabilites = new DriveCapabilites { Locking = true },
        Root = NewItem("", true),
    };

    private static Item NewItem(string name, bool isFolder, bool isOnServer = true) => new()
    {
        DriveId = DriveId,
        Id = new ItemId(),
        IsFolder = isFolder,
        IsInWorkspace = true,
        IsOnServer = isOnServer,
        LastModifiedDate = DateTime.UnixEpoch.AddSeconds(1.9),
        Name = name,
        RelativePath = name,
        WorkspacePath = $@"C:\Projects\{name}",
    };
}
#endif
