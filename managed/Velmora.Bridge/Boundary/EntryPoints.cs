using Velmora.Bridge.Requests;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// The functions of the table. None of them lets an exception out, and none of them names a type of the sync
/// application: a method that names a missing one ends the process when it is compiled, before its try block counts.
/// </summary>
internal static unsafe class EntryPoints
{
    public static void FillIn(TessaportEntryPoints* table)
    {
        table->Request = &Request;
        table->ReleaseHandle = &ReleaseHandle;
        table->ReleaseHandles = &ReleaseHandles;
        table->ReleaseReply = &ReleaseReply;
        table->CountHandles = &CountHandles;
    }

    // Each request is a method of its own that is not inlined: one whose member the sync application lacks fails alone.
    [UnmanagedCallersOnly]
    private static int Request(RequestNumber number, long service, RequestArguments* arguments, Reply* reply)
    {
        try
        {
            switch (number)
            {
                case RequestNumber.CreateService: ServiceRequests.CreateService(reply); break;
                case RequestNumber.CreateServiceForWindow: ServiceRequests.CreateServiceForWindow(arguments, reply); break;
                case RequestNumber.Discover: ServiceRequests.Discover(service); break;
                case RequestNumber.GetVersion: ServiceRequests.GetVersion(service, reply); break;
                case RequestNumber.GetDrives: ServiceRequests.GetDrives(service, reply); break;
                case RequestNumber.GetChildFolders: FolderRequests.GetChildFolders(service, arguments, reply); break;
                case RequestNumber.GetFolderContents: FolderRequests.GetFolderContents(service, arguments, reply); break;
                case RequestNumber.AddFiles: FileRequests.AddFiles(service, arguments, reply); break;
                case RequestNumber.GetOrCreateFolder: FolderRequests.GetOrCreateFolder(service, arguments, reply); break;
                case RequestNumber.CanAddFiles: FileRequests.CanAddFiles(service, arguments, reply); break;
                case RequestNumber.IsFileInWorkspace: FileRequests.IsFileInWorkspace(service, arguments, reply); break;
                case RequestNumber.SyncFiles: FileRequests.SyncFiles(service, arguments, reply); break;
                case RequestNumber.DeleteItems: FileRequests.DeleteItems(service, arguments, reply); break;
                case RequestNumber.GetItemsByWorkspacePaths: LookupRequests.GetItemsByWorkspacePaths(service, arguments, reply); break;
                case RequestNumber.GetItemsByRelativePaths: LookupRequests.GetItemsByRelativePaths(service, arguments, reply); break;
                case RequestNumber.FileClosedWithinRunningProcess: FileRequests.FileClosedWithinRunningProcess(service, arguments); break;
                case RequestNumber.GetPropertyDefinitions: PropertyRequests.GetPropertyDefinitions(service, arguments, reply); break;
                case RequestNumber.GetProperties: PropertyRequests.GetProperties(service, arguments, reply); break;
                case RequestNumber.GetCommands: CommandRequests.GetCommands(service, arguments, reply); break;
                case RequestNumber.ExecuteCommand: CommandRequests.ExecuteCommand(service, arguments, reply); break;
                case RequestNumber.GetPermanentIds: LookupRequests.GetPermanentIds(service, arguments, reply); break;
                case RequestNumber.GetItemsByPermanentIds: LookupRequests.GetItemsByPermanentIds(service, arguments, reply); break;
                case RequestNumber.GetFullPath: PathRequests.GetFullPath(arguments, reply); break;
                case RequestNumber.GetCommandImage: CommandRequests.GetCommandImage(arguments, reply); break;
                default: throw new NotSupportedException($"The managed half of the bridge has no request {(uint)number}. Install the library and its bridge folder from one release.");
            }
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static void ReleaseHandle(long handle) => HandleTable.Release(handle);

    [UnmanagedCallersOnly]
    private static void ReleaseHandles(long* handles, ulong count)
    {
        for (ulong i = 0; i < count; ++i)
            HandleTable.Release(handles[i]);
    }

    [UnmanagedCallersOnly]
    private static void ReleaseReply(Reply* reply) => ReplyWriter.Release(reply);

    [UnmanagedCallersOnly]
    private static long CountHandles() => HandleTable.Count();
}
