namespace Velmora.Bridge.Boundary;

/// <summary>
/// Keeps managed objects alive for native records. A handle is the number of a slot; 0 is the null object. Threads take
/// slots from one list of free slots and return them without a lock, which is several times cheaper than GC handles.
/// </summary>
internal static class HandleTable
{
    private const int ChunkBits = 12;
    private const int ChunkSize = 1 << ChunkBits;

    private struct Slot
    {
        public object? Target;
        public int NextFree;
    }

    private static readonly object Growing = new();
    private static Slot[][] _chunks = Array.Empty<Slot[]>();

    // The lower half is the number of the first free slot. The upper half counts changes, so that a slot that was taken
    // and returned between the read and the exchange does not look like an unchanged list.
    private static long _firstFree;

    public static long Add(object? target)
    {
        var own = new HandleChain();
        try
        {
            return own.Add(target);
        }
        finally
        {
            own.Dispose();
        }
    }

    /// <summary>
    /// Takes up to <paramref name="most"/> free slots with one exchange. Each is then filled by Fill, or given back by
    /// Return.
    /// </summary>
    /// <returns>How many were taken, at least one.</returns>
    public static int Take(int most, out int first)
    {
        while (true)
        {
            long head = Volatile.Read(ref _firstFree);
            first = (int)head;
            if (first == 0)
            {
                Grow();
                continue;
            }
            int count = 1;
            int next = NextOf(first);
            for (; count < most && next != 0; ++count)
                next = NextOf(next);
            if (Interlocked.CompareExchange(ref _firstFree, Following(head, next), head) == head)
                return count;
        }
    }

    /// <summary>Fills a slot that was taken.</summary>
    /// <returns>The next slot of the chain.</returns>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public static int Fill(int number, object target)
    {
        ref Slot slot = ref SlotOf(number);
        slot.Target = target;
        return slot.NextFree;
    }

    /// <summary>Gives back slots that were taken and not filled.</summary>
    public static void Return(int first, int count)
    {
        for (int i = 0; i < count; ++i)
        {
            int next = SlotOf(first).NextFree;
            PushFree(first);
            first = next;
        }
    }

    /// <exception cref="InvalidOperationException">The handle is not in use.</exception>
    public static object? Get(long handle)
    {
        if (handle == 0)
            return null;
        object? target = IsNumber(handle) ? SlotOf((int)handle).Target : null;
        return target ?? throw new InvalidOperationException(
            "The native side passed a handle that is not in use; its native and managed parts do not belong together.");
    }

    public static void Release(long handle)
    {
        if (handle == 0 || !IsNumber(handle))
            return;
        ref Slot slot = ref SlotOf((int)handle);
        if (slot.Target == null)
            return;
        slot.Target = null;
        PushFree((int)handle);
    }

    /// <summary>How many handles are in use.</summary>
    public static long Count()
    {
        long count = 0;
        foreach (Slot[] chunk in Volatile.Read(ref _chunks))
        {
            foreach (ref readonly Slot slot in chunk.AsSpan())
            {
                if (slot.Target != null)
                    ++count;
            }
        }
        return count;
    }

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static void PushFree(int number)
    {
        ref Slot slot = ref SlotOf(number);
        while (true)
        {
            long head = Volatile.Read(ref _firstFree);
            Volatile.Write(ref slot.NextFree, (int)head);
            if (Interlocked.CompareExchange(ref _firstFree, Following(head, number), head) == head)
                return;
        }
    }

    // The read is ordered before all later ones. The number may be in a chunk that another thread has just added, and the
    // chunks that are read next must include it; processors other than x86 could read them first.
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static int NextOf(int number) => Volatile.Read(ref SlotOf(number).NextFree);

    private static long Following(long head, int first) => (((head >> 32) + 1) << 32) | (uint)first;

    private static bool IsNumber(long handle) => handle > 0 && handle <= (long)Volatile.Read(ref _chunks).Length << ChunkBits;

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static ref Slot SlotOf(int number) =>
        ref Volatile.Read(ref _chunks)[(number - 1) >> ChunkBits][(number - 1) & (ChunkSize - 1)];

    private static void Grow()
    {
        lock (Growing)
        {
            if ((int)Volatile.Read(ref _firstFree) != 0)
                return;
            Slot[][] previous = _chunks;
            int first = checked(previous.Length * ChunkSize + 1);
            var chunk = new Slot[ChunkSize];
            for (int i = 0; i < ChunkSize - 1; ++i)
                chunk[i].NextFree = first + i + 1;
            var grown = new Slot[previous.Length + 1][];
            previous.CopyTo(grown, 0);
            grown[previous.Length] = chunk;
            Volatile.Write(ref _chunks, grown);
            while (true)
            {
                long head = Volatile.Read(ref _firstFree);
                chunk[ChunkSize - 1].NextFree = (int)head;
                if (Interlocked.CompareExchange(ref _firstFree, Following(head, first), head) == head)
                    return;
            }
        }
    }
}
