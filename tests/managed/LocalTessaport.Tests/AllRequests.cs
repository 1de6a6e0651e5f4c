namespace Quorvex.Tessaport.API.Tests;

/// <summary>Every request of a service, by the name that the state file has for it.</summary>
internal static class AllRequests
{
    public static Dictionary<string, Action> Of(TessaportService service, ItemId id) => new()
    {
        ["discover"] = () => service.Discover(),
        ["getVersion"] = () => service.GetVersion(),
        ["getDrives"] = () => service.GetDrives(),
        ["getChildFolders"] = () => service.GetChildFolders(id),
        ["getFolderContents"] = () => service.GetFolderContents(id),
        ["addFiles"] = () => service.AddFiles(id, []),
        ["getOrCreateFolder"] = () => service.GetOrCreateFolder(id, "a"),
        ["canAddFiles"] = () => service.CanAddFiles(id, []),
        ["areFilesInWorkspace"] = () => service.AreFilesInWorkspace([]),
        ["syncFiles"] = () => service.SyncFiles([]),
        ["deleteItems"] = () => service.DeleteItems([]),
        ["getItemsByWorkspacePaths"] = () => service.GetItemsByWorkspacePaths([]),
        ["getItemsByRelativePaths"] = () => service.GetItemsByRelativePaths(id.Drive, []),
        ["fileClosedWithinRunningProcess"] = () => service.FileClosedWithinRunningProcess(1, "x"),
        ["getPropertyDefinitions"] = () => service.GetPropertyDefinitions(id.Drive),
        ["getProperties"] = () => service.GetProperties([], []),
        ["getCommands"] = () => service.GetCommands(new CommandContext(IntPtr.Zero, id, [])),
        ["executeCommand"] = () => service.ExecuteCommand(new Command { Id = "sync" }, new CommandContext(IntPtr.Zero, id, [])),
        ["getPermanentIds"] = () => service.GetPermanentIds([]),
        ["getItemsByPermanentIds"] = () => service.GetItemsByPermanentIds([]),
    };
}
