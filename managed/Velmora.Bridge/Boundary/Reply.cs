using System.Runtime.InteropServices;

namespace Velmora.Bridge.Boundary;

/// <summary>What a call leaves for the native side, which gives it back through ReleaseReply.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct Reply
{
    public byte* Data;
    public ulong Size;

    /// <summary>How many of the reply's handles, from the front, the native side has taken over.</summary>
    public ulong HandlesTaken;
}
