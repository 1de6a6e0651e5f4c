using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Local;

/// <summary>A moment as a file system stores it, since 1970 in UTC; the default value means unknown.</summary>
/// <remarks>In 12 bytes instead of 16: records and snapshots keep several for each file.</remarks>
[StructLayout(LayoutKind.Sequential, Pack = sizeof(int))]
internal readonly record struct FileTime(long Seconds, int Nanoseconds)
{
    private const int NanosecondsPerTick = 100;

    private static readonly long Earliest = -(DateTime.UnixEpoch.Ticks / TimeSpan.TicksPerSecond);
    private static readonly long Latest = (DateTime.MaxValue - DateTime.UnixEpoch).Ticks / TimeSpan.TicksPerSecond - 1;

    public bool IsKnown => this != default;

    public static FileTime Of(DateTime time)
    {
        var (seconds, ticks) = Math.DivRem(time.Ticks - DateTime.UnixEpoch.Ticks, TimeSpan.TicksPerSecond);
        return ticks < 0
            ? new FileTime(seconds - 1, (int)(ticks + TimeSpan.TicksPerSecond) * NanosecondsPerTick)
            : new FileTime(seconds, (int)ticks * NanosecondsPerTick);
    }

    /// <summary>The same moment, or the nearest one that a date can express.</summary>
    public DateTime ToDateTime() => DateTime.UnixEpoch.AddTicks(
        Math.Clamp(Seconds, Earliest, Latest) * TimeSpan.TicksPerSecond + Nanoseconds / NanosecondsPerTick);

    public long ToNanoseconds() => unchecked(Seconds * 1_000_000_000 + Nanoseconds);
}
