using System;
using System.Runtime.CompilerServices;

namespace Velmora.Bridge.Boundary;

/// <summary>Makes handles out of slots that it takes from the table a chain at a time, for one thread.</summary>
internal struct HandleChain : IDisposable
{
    private const int LongestChain = 64;

    private int first;
    private int count;
    private int chainLength;

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public long Add(object? target)
    {
        if (target == null)
            return 0;
        if (count == 0)
            Take();
        int number = first;
        first = HandleTable.Fill(number, target);
        --count;
        return number;
    }

    public void Dispose()
    {
        HandleTable.Return(first, count);
        count = 0;
    }

    // One at first: most replies hold few handles.
    [MethodImpl(MethodImplOptions.NoInlining)]
    private void Take()
    {
        chainLength = Math.Clamp(chainLength * 4, 1, LongestChain);
        count = HandleTable.Take(chainLength, out first);
    }
}
