namespace Velmora.Peers;

/// <summary>
/// One call for each property, as in a first draft: a GC handle for each object, a new native copy of each string.
/// </summary>
public static class Naive
{
    [UnmanagedCallersOnly]
    public static nint Item(int index) => GCHandle.ToIntPtr(GCHandle.Alloc(Listing.Items[index]));

    [UnmanagedCallersOnly]
    public static void Release(nint handle) => GCHandle.FromIntPtr(handle).Free();

    [UnmanagedCallersOnly]
    public static nint Id(nint item) => GCHandle.ToIntPtr(GCHandle.Alloc(Of(item).Id));

    [UnmanagedCallersOnly]
    public static nint DriveId(nint item) => Marshal.StringToCoTaskMemUni(Of(item).DriveId.ToString());

    [UnmanagedCallersOnly]
    public static int IsFolder(nint item) => Of(item).IsFolder ? 1 : 0;

    [UnmanagedCallersOnly]
    public static int IsInWorkspace(nint item) => Of(item).IsInWorkspace ? 1 : 0;

    [UnmanagedCallersOnly]
    public static int IsOnServer(nint item) => Of(item).IsOnServer ? 1 : 0;

    [UnmanagedCallersOnly]
    public static long LastModified(nint item) =>
        (long)(Of(item).LastModifiedDate.ToUniversalTime() - new DateTime(1970, 1, 1)).TotalSeconds;

    [UnmanagedCallersOnly]
    public static nint Name(nint item) => Marshal.StringToCoTaskMemUni(Of(item).Name);

    [UnmanagedCallersOnly]
    public static nint RelativePath(nint item) => Marshal.StringToCoTaskMemUni(Of(item).RelativePath);

    [UnmanagedCallersOnly]
    public static nint WorkspacePath(nint item) => Marshal.StringToCoTaskMemUni(Of(item).WorkspacePath);

    [UnmanagedCallersOnly]
    public static void FreeString(nint value) => Marshal.FreeCoTaskMem(value);

    private static Item Of(nint handle) => (Item)GCHandle.FromIntPtr(handle).Target!;
}
