#nullable disable
using Quorvex.Tessaport.API.Scripted;

namespace Quorvex.Tessaport.API;

/// <summary>A service whose answers a script sets, and which records its calls.</summary>
public class TessaportService
{
    internal static readonly Identities<TessaportService> Known = new();
    private static int _constructed;

    private readonly int _number;

    public TessaportService() : this(null)
    {
    }

    public TessaportService(IntPtr windowHandle) : this((long?)windowHandle)
    {
    }

    private TessaportService(long? window)
    {
        if (Journal.IsOn)
        {
            _number = Interlocked.Increment(ref _constructed);
            Known.Get(_number, () => this);
            Record("TessaportService")?.With("window", (object)window);
        }
        Members.Construct.Answer();
    }

    internal static void ForgetAll()
    {
        Known.Clear();
        _constructed = 0;
    }

    public void Discover()
    {
        Record("Discover");
        Members.Discover.Answer();
    }

    public string GetVersion()
    {
        Record("GetVersion");
        return Members.GetVersion.Answer();
    }

    public IEnumerable<Drive> GetDrives()
    {
        Record("GetDrives");
        return Members.GetDrives.Answer();
    }

    public IEnumerable<Item> GetChildFolders(ItemId folder)
    {
        Record("GetChildFolders")?.With("folder", folder);
        return Members.GetChildFolders.Answer(folder);
    }

    public IEnumerable<Item> GetFolderContents(ItemId folder)
    {
        Record("GetFolderContents")?.With("folder", folder);
        return Members.GetFolderContents.Answer(folder);
    }

    public CommandResult AddFiles(ItemId folder, List<string> paths)
    {
        Record("AddFiles")?.With("folder", folder).With("paths", (object)paths);
        return Members.AddFiles.Answer();
    }

    public Item GetOrCreateFolder(ItemId parent, string name)
    {
        Record("GetOrCreateFolder")?.With("parent", parent).With("name", (object)name);
        return Members.GetOrCreateFolder.Answer();
    }

    public bool CanAddFiles(ItemId folder, List<string> paths)
    {
        Record("CanAddFiles")?.With("folder", folder).With("paths", (object)paths).With("contents", LocalFiles.ContentsOf(paths));
        return Members.CanAddFiles.Answer();
    }

    public Dictionary<string, bool> AreFilesInWorkspace(List<string> paths)
    {
        Record("AreFilesInWorkspace")?.With("paths", (object)paths);
        return Members.AreFilesInWorkspace.Answer()(paths);
    }

    public CommandResult SyncFiles(List<ItemId> ids)
    {
        Record("SyncFiles")?.With("ids", ids);
        return Members.SyncFiles.Answer();
    }

    public CommandResult DeleteItems(List<ItemId> ids)
    {
        Record("DeleteItems")?.With("ids", ids);
        return Members.DeleteItems.Answer();
    }

    public IEnumerable<WorkspacePathToItemResult> GetItemsByWorkspacePaths(List<string> paths)
    {
        Record("GetItemsByWorkspacePaths")?.With("paths", (object)paths);
        return Members.GetItemsByWorkspacePaths.Answer();
    }

    public IEnumerable<Item> GetItemsByRelativePaths(Guid driveId, List<string> relativePaths)
    {
        Record("GetItemsByRelativePaths")?.With("driveId", (object)driveId).With("paths", (object)relativePaths);
        return Members.GetItemsByRelativePaths.Answer();
    }

    public void FileClosedWithinRunningProcess(int processId, string path)
    {
        if (Channel.TryAttach(processId, path))
            return;
        Record("FileClosedWithinRunningProcess")?.With("processId", (object)processId).With("path", (object)path);
        Members.FileClosedWithinRunningProcess.Answer();
    }

    public IEnumerable<PropertyDefinition> GetPropertyDefinitions(Guid driveId)
    {
        Record("GetPropertyDefinitions")?.With("driveId", (object)driveId);
        return Members.GetPropertyDefinitions.Answer();
    }

    public PropertyValues GetProperties(List<ItemId> ids, List<string> propertyDefinitionIds)
    {
        Record("GetProperties")?.With("ids", ids).With("properties", (object)propertyDefinitionIds);
        return Members.GetProperties.Answer();
    }

    public IEnumerable<Command> GetCommands(CommandContext context)
    {
        Record("GetCommands")?.With(context);
        return Members.GetCommands.Answer();
    }

    public CommandResult ExecuteCommand(Command command, CommandContext context)
    {
        Record("ExecuteCommand")?.With("command", command).With(context);
        return Members.ExecuteCommand.Answer();
    }

    public IEnumerable<ItemIdToPermanentIdResult> GetPermanentIds(List<ItemId> ids)
    {
        Record("GetPermanentIds")?.With("ids", ids);
        return Members.GetPermanentIds.Answer();
    }

    public IEnumerable<PermanentIdToItemResult> GetItemsByPermanentIds(List<string> permanentIds)
    {
        Record("GetItemsByPermanentIds")?.With("permanentIds", (object)permanentIds);
        return Members.GetItemsByPermanentIds.Answer();
    }

    // Returns null if no one reads the calls, so that they cost nothing.
    private Call Record(string member)
    {
        if (!Journal.IsOn)
            return null;
        var call = new Call(member, _number);
        Journal.Add(call);
        return call;
    }
}
