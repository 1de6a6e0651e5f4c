namespace Quorvex.Tessaport.API;

/// <summary>
/// The requests of the sync application, for compiling only: the assembly that is found at run time implements them.
/// </summary>
public class TessaportService
{
    public TessaportService() => throw null;
    public TessaportService(IntPtr windowHandle) => throw null;
    public void Discover() => throw null;
    public string GetVersion() => throw null;
    public IEnumerable<Drive> GetDrives() => throw null;
    public IEnumerable<Item> GetChildFolders(ItemId folder) => throw null;
    public IEnumerable<Item> GetFolderContents(ItemId folder) => throw null;
    public CommandResult AddFiles(ItemId folder, List<string> paths) => throw null;
    public Item GetOrCreateFolder(ItemId parent, string name) => throw null;
    public bool CanAddFiles(ItemId folder, List<string> paths) => throw null;
    public Dictionary<string, bool> AreFilesInWorkspace(List<string> paths) => throw null;
    public CommandResult SyncFiles(List<ItemId> ids) => throw null;
    public CommandResult DeleteItems(List<ItemId> ids) => throw null;
    public IEnumerable<WorkspacePathToItemResult> GetItemsByWorkspacePaths(List<string> paths) => throw null;
    public IEnumerable<Item> GetItemsByRelativePaths(Guid driveId, List<string> relativePaths) => throw null;
    public void FileClosedWithinRunningProcess(int processId, string path) => throw null;
    public IEnumerable<PropertyDefinition> GetPropertyDefinitions(Guid driveId) => throw null;
    public PropertyValues GetProperties(List<ItemId> ids, List<string> propertyDefinitionIds) => throw null;
    public IEnumerable<Command> GetCommands(CommandContext context) => throw null;
    public CommandResult ExecuteCommand(Command command, CommandContext context) => throw null;
    public IEnumerable<ItemIdToPermanentIdResult> GetPermanentIds(List<ItemId> ids) => throw null;
    public IEnumerable<PermanentIdToItemResult> GetItemsByPermanentIds(List<string> permanentIds) => throw null;
}
