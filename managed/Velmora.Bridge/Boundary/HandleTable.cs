using System;
using System.Runtime.CompilerServices;
using System.Threading;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// Keeps managed objects alive for native records. A handle is a slot's number; 0 is the null object. Slots are taken
/// from and returned to one list of free ones without a lock, on whatever thread, several times cheaper than GC handles.
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

    private static readonly object growing = new();
    private static Slot[][] chunks = Array.Empty<Slot[]>();

    // Number of the first free slot in the lower half, a count of changes in the upper: a slot that was taken and
    // returned between the read and the exchange must not pass for an unchanged list.
    private static long firstFree;

    [MethodImpl(MethodImplOptions.AggressiveOptimization)]
    public static long Add(object? target)
    {
        if (target == null)
            return 0;
        while (true) {
            long head = Volatile.Read(ref firstFree);
            int number = (int)head;
            if (number == 0) {
                Grow();
                continue;
            }
            ref Slot slot = ref SlotOf(number);
            if (Interlocked.CompareExchange(ref firstFree, Following(head, slot.NextFree), head) != head)
                continue;
            slot.Target = target;
            return number;
        }
    }

    /// <exception cref="InvalidOperationException">The handle is not one that is in use.</exception>
    public static object? Get(long handle)
    {
        if (handle == 0)
            return null;
        object? target = IsNumber(handle) ? SlotOf((int)handle).Target : null;
        return target ?? throw new InvalidOperationException(
            "The native side passed a handle that is not in use; its native and managed parts do not belong together.");
    }

    [MethodImpl(MethodImplOptions.AggressiveOptimization)]
    public static void Release(long handle)
    {
        if (handle == 0 || !IsNumber(handle))
            return;
        ref Slot slot = ref SlotOf((int)handle);
        if (slot.Target == null)
            return;
        slot.Target = null;
        while (true) {
            long head = Volatile.Read(ref firstFree);
            slot.NextFree = (int)head;
            if (Interlocked.CompareExchange(ref firstFree, Following(head, (int)handle), head) == head)
                return;
        }
    }

    /// <summary>How many handles are in use.</summary>
    public static long Count()
    {
        long count = 0;
        foreach (Slot[] chunk in Volatile.Read(ref chunks)) {
            foreach (ref readonly Slot slot in chunk.AsSpan()) {
                if (slot.Target != null)
                    ++count;
            }
        }
        return count;
    }

    private static long Following(long head, int first) => (((head >> 32) + 1) << 32) | (uint)first;

    private static bool IsNumber(long handle) => handle > 0 && handle <= (long)Volatile.Read(ref chunks).Length << ChunkBits;

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static ref Slot SlotOf(int number) =>
        ref Volatile.Read(ref chunks)[(number - 1) >> ChunkBits][(number - 1) & (ChunkSize - 1)];

    private static void Grow()
    {
        lock (growing) {
            if ((int)Volatile.Read(ref firstFree) != 0)
                return;
            Slot[][] former = chunks;
            int first = checked(former.Length * ChunkSize + 1);
            var chunk = new Slot[ChunkSize];
            for (int i = 0; i < ChunkSize - 1; ++i)
                chunk[i].NextFree = first + i + 1;
            var grown = new Slot[former.Length + 1][];
            former.CopyTo(grown, 0);
            grown[former.Length] = chunk;
            Volatile.Write(ref chunks, grown);
            while (true) {
                long head = Volatile.Read(ref firstFree);
                chunk[ChunkSize - 1].NextFree = (int)head;
                if (Interlocked.CompareExchange(ref firstFree, Following(head, first), head) == head)
                    return;
            }
        }
    }
}
