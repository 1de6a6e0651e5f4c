namespace Velmora.Bridge.Boundary;

/// <summary>Makes handles from slots that it takes from the table in chains. Not thread-safe.</summary>
internal struct HandleChain : IDisposable
{
    private const int LongestChain = 64;

    private int _first;
    private int _count;
    private int _chainLength;

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public long Add(object? target)
    {
        if (target == null)
            return 0;
        if (_count == 0)
            Take();
        int number = _first;
        _first = HandleTable.Fill(number, target);
        --_count;
        return number;
    }

    public void Dispose()
    {
        HandleTable.Return(_first, _count);
        _count = 0;
    }

    // The first chain is one slot, because most replies have few handles.
    [MethodImpl(MethodImplOptions.NoInlining)]
    private void Take()
    {
        _chainLength = Math.Clamp(_chainLength * 4, 1, LongestChain);
        _count = HandleTable.Take(_chainLength, out _first);
    }
}
