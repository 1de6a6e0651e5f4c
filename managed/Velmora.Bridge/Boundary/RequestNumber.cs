namespace Velmora.Bridge.Boundary;

/// <summary>
/// The requests, by the numbers that VelmoraRequest in velmora/bridge/boundary/TessaportEntryPoints.h gives them. A new
/// one goes last in both.
/// </summary>
internal enum RequestNumber : uint
{
    CreateService,
    CreateServiceForWindow,
    Discover,
    GetVersion,
    GetDrives,
    GetChildFolders,
    GetFolderContents,
    AddFiles,
    GetOrCreateFolder,
    CanAddFiles,
    IsFileInWorkspace,
    SyncFiles,
    DeleteItems,
    GetItemsByWorkspacePaths,
    GetItemsByRelativePaths,
    FileClosedWithinRunningProcess,
    GetPropertyDefinitions,
    GetProperties,
    GetCommands,
    ExecuteCommand,
    GetPermanentIds,
    GetItemsByPermanentIds,
    GetFullPath,
    GetCommandImage,

    /// <summary>How many requests there are.</summary>
    Count,
}
