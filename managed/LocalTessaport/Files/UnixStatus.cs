using System;
using System.IO;
using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Local;

/// <summary>One system call for kind, size, time and number of a file, where FileInfo needs several and does not tell the number.</summary>
internal static partial class UnixStatus
{
    private const int CurrentFolder = -100;
    private const int NoFollow = 0x100;
    private const uint BasicAndBirth = 0xfff;
    private const uint Birth = 0x800;

    private const int TypeMask = 0xf000;
    private const int TypeFolder = 0x4000;
    private const int TypeFile = 0x8000;

    public static readonly bool IsSupported = OperatingSystem.IsLinux() && HasCall();

    public static FileEntry? Read(string path, bool followLinks)
    {
        if (Call(CurrentFolder, path, followLinks ? 0 : NoFollow, BasicAndBirth, out var status) != 0)
        {
            if (!MeansAbsent(Marshal.GetLastPInvokeError()))
                throw new IOException($"'{path}' cannot be examined: {Marshal.GetLastPInvokeErrorMessage()}.");
            return null;
        }
        return (status.Mode & TypeMask) switch
        {
            TypeFile => new FileEntry(false, (long)status.Size, status.Modified.ToDateTime(), IdentityOf(status)),
            TypeFolder => new FileEntry(true, 0, status.Modified.ToDateTime(), IdentityOf(status)),
            _ => null,
        };
    }

    // Numbers are used again. Where the file system does not tell when a file was made, the last change has to do: a file that was
    // changed and moved is then found by other means, but never one taken for another.
    private static FileIdentity IdentityOf(in Status status) =>
        new(status.Number, ((status.Mask & Birth) != 0 ? status.Born : status.Modified).ToNanoseconds());

    // EPERM 1 and EIO 5 are not among them: a file that is there and cannot be examined must not count as absent.
    private static bool MeansAbsent(int error) => error is
        2 /* ENOENT */ or 13 /* EACCES */ or 20 /* ENOTDIR */ or 22 /* EINVAL */ or 36 /* ENAMETOOLONG */ or 40 /* ELOOP */ or 84 /* EILSEQ */;

    private static bool HasCall()
    {
        try
        {
            return Call(CurrentFolder, "/", 0, BasicAndBirth, out _) == 0;
        }
        catch (Exception e) when (e is EntryPointNotFoundException or DllNotFoundException)
        {
            return false;
        }
    }

    [LibraryImport("libc", EntryPoint = "statx", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    private static partial int Call(int folder, string path, int flags, uint mask, out Status status);

    // The kernel's own layout, the same on every architecture.
    [StructLayout(LayoutKind.Explicit, Size = 256)]
    private struct Status
    {
        [FieldOffset(0)] public uint Mask;
        [FieldOffset(28)] public ushort Mode;
        [FieldOffset(32)] public ulong Number;
        [FieldOffset(40)] public ulong Size;
        [FieldOffset(80)] public Moment Born;
        [FieldOffset(112)] public Moment Modified;
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct Moment
    {
        public long Seconds;
        public uint Nanoseconds;
        public int Reserved;

        public readonly DateTime ToDateTime()
        {
            var farthest = (DateTime.MaxValue - DateTime.UnixEpoch).Ticks / TimeSpan.TicksPerSecond - 1;
            var seconds = Math.Clamp(Seconds, -(DateTime.UnixEpoch.Ticks / TimeSpan.TicksPerSecond), farthest);
            return DateTime.UnixEpoch.AddTicks(seconds * TimeSpan.TicksPerSecond + Nanoseconds / 100);
        }

        public readonly long ToNanoseconds() => unchecked(Seconds * 1_000_000_000 + Nanoseconds);
    }
}
