namespace Velmora.Bridge.Boundary;

/// <summary>
/// The table of functions that the native side calls. Mirrors velmora/bridge/boundary/TessaportEntryPoints.h field by
/// field; a change of either, or of what crosses by these functions, raises the version in both.
/// </summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct TessaportEntryPoints
{
    public const uint CurrentVersion = 2;

    // What the native side expects; it sets these four before the start.
    public uint Version;
    public uint Size;
    public uint ArgumentsSize;
    public uint RequestCount;

    public delegate* unmanaged<RequestNumber, long, RequestArguments*, Reply*, int> Request;
    public delegate* unmanaged<long, void> ReleaseHandle;
    public delegate* unmanaged<long*, ulong, void> ReleaseHandles;
    public delegate* unmanaged<Reply*, void> ReleaseReply;
    public delegate* unmanaged<long> CountHandles;

    /// <summary>False when the native side was built for another bridge.</summary>
    public readonly bool FitsThisBridge => Version == CurrentVersion && Size == sizeof(TessaportEntryPoints)
        && ArgumentsSize == sizeof(RequestArguments) && RequestCount == (uint)RequestNumber.Count
        && sizeof(ReplyHeader) == 16 && sizeof(ItemBlock) == 40;
}
