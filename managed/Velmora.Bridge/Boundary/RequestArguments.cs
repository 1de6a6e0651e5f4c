namespace Velmora.Bridge.Boundary;

/// <summary>
/// The arguments of any request; those that it does not have are zero. Everything belongs to the native side, for the
/// time of the call. Mirrors VelmoraArguments.
/// </summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct RequestArguments
{
    /// <summary>The folder, parent or command that the request is about.</summary>
    public long Target;

    public long* Handles;
    public ulong HandleCount;
    public NativeString* Strings;
    public ulong StringCount;

    /// <summary>A drive's identifier: 16 bytes, in the order of its text form.</summary>
    public byte* Identifier;

    public NativeContext* Context;
    public nint Window;
    public long Number;
}

/// <summary>A command context. Mirrors VelmoraContext.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct NativeContext
{
    public nint Window;
    public long Item;
    public long* Items;
    public ulong ItemCount;
}
