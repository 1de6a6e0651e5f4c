namespace Velmora.Bridge.Boundary;

/// <summary>A string that the native side owns for the time of the call. Mirrors VelmoraString.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct NativeString
{
    public char* Data;
    public ulong Length;

    public override readonly string ToString() => new(Data, 0, checked((int)Length));
}
