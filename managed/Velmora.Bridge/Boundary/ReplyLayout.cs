namespace Velmora.Bridge.Boundary;

// How replies are packed; velmora/bridge/boundary/ReplyLayout.h has the same for the reading side.

/// <summary>
/// What a reply begins with. The records follow, then the handles in the order in which the records refer to them.
/// </summary>
[StructLayout(LayoutKind.Sequential)]
internal struct ReplyHeader
{
    public uint RecordCount;
    public uint HandleCount;
    public ulong HandlesOffset;
}

/// <summary>What an item begins with. The UTF-16 of its three strings follows without gaps.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct ItemBlock
{
    public fixed byte DriveId[16];
    public long LastModified;
    public uint NameLength;
    public uint RelativePathLength;
    public uint WorkspacePathLength;
    public ItemFlags Flags;
}

[Flags]
internal enum ItemFlags : uint
{
    None = 0,
    Folder = 1,
    InWorkspace = 2,
    OnServer = 4,
}
