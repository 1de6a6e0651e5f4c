using System;
using System.Runtime.InteropServices;
using Velmora.Bridge.Replies;
using Velmora.Bridge.Requests;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// The functions of the table. None of them lets an exception out, and none of them names a type of the sync
/// application: a method that names a missing one aborts the process when it is compiled, before its try block counts.
/// </summary>
internal static unsafe class EntryPoints
{
    public static void FillIn(TessaportEntryPoints* table)
    {
        table->CreateService = &CreateService;
        table->CreateServiceForWindow = &CreateServiceForWindow;
        table->Discover = &Discover;
        table->GetVersion = &GetVersion;
        table->GetDrives = &GetDrives;
        table->GetChildFolders = &GetChildFolders;
        table->GetFolderContents = &GetFolderContents;
        table->AddFiles = &AddFiles;
        table->GetOrCreateFolder = &GetOrCreateFolder;
        table->CanAddFiles = &CanAddFiles;
        table->IsFileInWorkspace = &IsFileInWorkspace;
        table->SyncFiles = &SyncFiles;
        table->DeleteItems = &DeleteItems;
        table->GetItemsByWorkspacePaths = &GetItemsByWorkspacePaths;
        table->GetItemsByRelativePaths = &GetItemsByRelativePaths;
        table->FileClosedWithinRunningProcess = &FileClosedWithinRunningProcess;
        table->GetPropertyDefinitions = &GetPropertyDefinitions;
        table->GetProperties = &GetProperties;
        table->GetCommands = &GetCommands;
        table->ExecuteCommand = &ExecuteCommand;
        table->GetPermanentIds = &GetPermanentIds;
        table->GetItemsByPermanentIds = &GetItemsByPermanentIds;
        table->GetFullPath = &GetFullPath;
        table->ReleaseHandle = &ReleaseHandle;
        table->ReleaseHandles = &ReleaseHandles;
        table->ReleaseReply = &ReleaseReply;
        table->CountHandles = &CountHandles;
    }

    [UnmanagedCallersOnly]
    private static int CreateService(long* service, Reply* reply)
    {
        try
        {
            ServiceRequests.CreateService(service, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int CreateServiceForWindow(nint window, long* service, Reply* reply)
    {
        try
        {
            ServiceRequests.CreateServiceForWindow(window, service, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int Discover(long service, Reply* reply)
    {
        try
        {
            ServiceRequests.Discover(service, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetVersion(long service, Reply* reply)
    {
        try
        {
            ServiceRequests.GetVersion(service, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetDrives(long service, Reply* reply)
    {
        try
        {
            ServiceRequests.GetDrives(service, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetChildFolders(long service, long folder, Reply* reply)
    {
        try
        {
            FolderRequests.GetChildFolders(service, folder, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetFolderContents(long service, long folder, Reply* reply)
    {
        try
        {
            FolderRequests.GetFolderContents(service, folder, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int AddFiles(long service, long folder, NativeText* paths, ulong count, Reply* reply)
    {
        try
        {
            FileRequests.AddFiles(service, folder, paths, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetOrCreateFolder(long service, long parent, NativeText* name, Reply* reply)
    {
        try
        {
            FolderRequests.GetOrCreateFolder(service, parent, name, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int CanAddFiles(long service, long folder, NativeText* paths, ulong count, Reply* reply)
    {
        try
        {
            FileRequests.CanAddFiles(service, folder, paths, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int IsFileInWorkspace(long service, NativeText* path, Reply* reply)
    {
        try
        {
            FileRequests.IsFileInWorkspace(service, path, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int SyncFiles(long service, long* ids, ulong count, Reply* reply)
    {
        try
        {
            FileRequests.SyncFiles(service, ids, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int DeleteItems(long service, long* ids, ulong count, Reply* reply)
    {
        try
        {
            FileRequests.DeleteItems(service, ids, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetItemsByWorkspacePaths(long service, NativeText* paths, ulong count, Reply* reply)
    {
        try
        {
            LookupRequests.GetItemsByWorkspacePaths(service, paths, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetItemsByRelativePaths(long service, byte* driveId, NativeText* paths, ulong count, Reply* reply)
    {
        try
        {
            LookupRequests.GetItemsByRelativePaths(service, driveId, paths, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int FileClosedWithinRunningProcess(long service, int processId, NativeText* path, Reply* reply)
    {
        try
        {
            FileRequests.FileClosedWithinRunningProcess(service, processId, path, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetPropertyDefinitions(long service, byte* driveId, Reply* reply)
    {
        try
        {
            PropertyRequests.GetPropertyDefinitions(service, driveId, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetProperties(long service, long* ids, ulong idCount, NativeText* properties, ulong propertyCount, Reply* reply)
    {
        try
        {
            PropertyRequests.GetProperties(service, ids, idCount, properties, propertyCount, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetCommands(long service, NativeContext* context, Reply* reply)
    {
        try
        {
            CommandRequests.GetCommands(service, context, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int ExecuteCommand(long service, long command, NativeContext* context, Reply* reply)
    {
        try
        {
            CommandRequests.ExecuteCommand(service, command, context, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetPermanentIds(long service, long* ids, ulong count, Reply* reply)
    {
        try
        {
            LookupRequests.GetPermanentIds(service, ids, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetItemsByPermanentIds(long service, NativeText* permanentIds, ulong count, Reply* reply)
    {
        try
        {
            LookupRequests.GetItemsByPermanentIds(service, permanentIds, count, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static int GetFullPath(NativeText* path, Reply* reply)
    {
        try
        {
            PathRequests.GetFullPath(path, reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    [UnmanagedCallersOnly]
    private static void ReleaseHandle(long handle)
    {
        try
        {
            HandleTable.Release(handle);
        }
        catch (Exception)
        {
        }
    }

    [UnmanagedCallersOnly]
    private static void ReleaseHandles(long* handles, ulong count)
    {
        try
        {
            for (ulong i = 0; i < count; ++i)
                HandleTable.Release(handles[i]);
        }
        catch (Exception)
        {
        }
    }

    [UnmanagedCallersOnly]
    private static void ReleaseReply(Reply* reply)
    {
        try
        {
            ReplyWriter.Release(reply);
        }
        catch (Exception)
        {
        }
    }

    [UnmanagedCallersOnly]
    private static long CountHandles()
    {
        try
        {
            return HandleTable.Count();
        }
        catch (Exception)
        {
            return -1;
        }
    }
}
