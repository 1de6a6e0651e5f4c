using System.Runtime.InteropServices;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// The table of functions that the native side calls. Mirrors velmora/bridge/runtime/TessaportEntryPoints.h field by
/// field; a change of either raises the version in both.
/// </summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct TessaportEntryPoints
{
    public const uint CurrentVersion = 1;

    public uint Version;
    public uint Size;

    public delegate* unmanaged<long*, Reply*, int> CreateService;
    public delegate* unmanaged<nint, long*, Reply*, int> CreateServiceForWindow;
    public delegate* unmanaged<long, Reply*, int> Discover;
    public delegate* unmanaged<long, Reply*, int> GetVersion;
    public delegate* unmanaged<long, Reply*, int> GetDrives;
    public delegate* unmanaged<long, long, Reply*, int> GetChildFolders;
    public delegate* unmanaged<long, long, Reply*, int> GetFolderContents;
    public delegate* unmanaged<long, long, NativeText*, ulong, Reply*, int> AddFiles;
    public delegate* unmanaged<long, long, NativeText*, Reply*, int> GetOrCreateFolder;
    public delegate* unmanaged<long, long, NativeText*, ulong, Reply*, int> CanAddFiles;
    public delegate* unmanaged<long, NativeText*, Reply*, int> IsFileInWorkspace;
    public delegate* unmanaged<long, long*, ulong, Reply*, int> SyncFiles;
    public delegate* unmanaged<long, long*, ulong, Reply*, int> DeleteItems;
    public delegate* unmanaged<long, NativeText*, ulong, Reply*, int> GetItemsByWorkspacePaths;
    public delegate* unmanaged<long, byte*, NativeText*, ulong, Reply*, int> GetItemsByRelativePaths;
    public delegate* unmanaged<long, int, NativeText*, Reply*, int> FileClosedWithinRunningProcess;
    public delegate* unmanaged<long, byte*, Reply*, int> GetPropertyDefinitions;
    public delegate* unmanaged<long, long*, ulong, NativeText*, ulong, Reply*, int> GetProperties;
    public delegate* unmanaged<long, NativeContext*, Reply*, int> GetCommands;
    public delegate* unmanaged<long, long, NativeContext*, Reply*, int> ExecuteCommand;
    public delegate* unmanaged<long, long*, ulong, Reply*, int> GetPermanentIds;
    public delegate* unmanaged<long, NativeText*, ulong, Reply*, int> GetItemsByPermanentIds;
    public delegate* unmanaged<NativeText*, Reply*, int> GetFullPath;
    public delegate* unmanaged<long, void> ReleaseHandle;
    public delegate* unmanaged<long*, ulong, void> ReleaseHandles;
    public delegate* unmanaged<Reply*, void> ReleaseReply;
    public delegate* unmanaged<long> CountHandles;
}

/// <summary>A command context as the native side gives it, for the time of the call.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct NativeContext
{
    public nint Window;
    public long Item;
    public long* Items;
    public ulong ItemCount;
}
