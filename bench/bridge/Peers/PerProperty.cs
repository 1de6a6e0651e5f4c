namespace Velmora.Peers;

/// <summary>
/// One call for each property, written with care: no marshalling, strings copied directly into the caller's buffer.
/// </summary>
public static unsafe class PerProperty
{
    private static readonly DateTime Epoch = new(1970, 1, 1);

    [UnmanagedCallersOnly]
    public static int Make(int count)
    {
        Listing.Make(count);
        return count;
    }

    [UnmanagedCallersOnly]
    public static nint Id(int index) => GCHandle.ToIntPtr(GCHandle.Alloc(Listing.Items[index].Id));

    [UnmanagedCallersOnly]
    public static void Release(nint id) => GCHandle.FromIntPtr(id).Free();

    [UnmanagedCallersOnly]
    public static void DriveId(int index, byte* target) =>
        Listing.Items[index].DriveId.TryWriteBytes(new Span<byte>(target, 16), true, out _);

    [UnmanagedCallersOnly]
    public static int IsFolder(int index) => Listing.Items[index].IsFolder ? 1 : 0;

    [UnmanagedCallersOnly]
    public static int IsInWorkspace(int index) => Listing.Items[index].IsInWorkspace ? 1 : 0;

    [UnmanagedCallersOnly]
    public static int IsOnServer(int index) => Listing.Items[index].IsOnServer ? 1 : 0;

    [UnmanagedCallersOnly]
    public static long LastModified(int index) =>
        (long)(Listing.Items[index].LastModifiedDate.ToUniversalTime() - Epoch).TotalSeconds;

    [UnmanagedCallersOnly]
    public static int Name(int index, char* target, int capacity) => Copy(Listing.Items[index].Name, target, capacity);

    [UnmanagedCallersOnly]
    public static int RelativePath(int index, char* target, int capacity) =>
        Copy(Listing.Items[index].RelativePath, target, capacity);

    [UnmanagedCallersOnly]
    public static int WorkspacePath(int index, char* target, int capacity) =>
        Copy(Listing.Items[index].WorkspacePath, target, capacity);

    private static int Copy(string text, char* target, int capacity)
    {
        text.AsSpan(0, Math.Min(text.Length, capacity)).CopyTo(new Span<char>(target, capacity));
        return text.Length;
    }
}
