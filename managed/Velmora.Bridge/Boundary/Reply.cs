namespace Velmora.Bridge.Boundary;

/// <summary>What a call leaves for the native side, which gives it back through ReleaseReply. Mirrors VelmoraReply.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct Reply
{
    public byte* Data;
    public ulong Size;

    /// <summary>How many of the reply's handles, counted from the first, the native side has taken over.</summary>
    public ulong HandlesTaken;

    /// <summary>
    /// Takes a full piece of a long list; a result other than 0 ends the request. Null means that the list comes in one
    /// piece.
    /// </summary>
    public delegate* unmanaged<Reply*, int> TakePiece;

    public void* Taker;

    /// <summary>How many records a list announces, before its first piece; 0 when it does not say.</summary>
    public ulong ExpectedCount;
}
