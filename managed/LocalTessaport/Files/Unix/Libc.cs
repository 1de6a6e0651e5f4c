using System.Reflection;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The calls of the C library that .NET does not offer: everything relative to an open folder.</summary>
internal static unsafe partial class Libc
{
    public const int CurrentFolder = -100;

    // The flags of open() that differ between architectures.
    private static readonly bool IsArm = RuntimeInformation.ProcessArchitecture is Architecture.Arm64 or Architecture.Arm;
    public static readonly int OpenFolder = IsArm ? 0x4000 : 0x10000;
    public static readonly int OpenNoFollow = IsArm ? 0x8000 : 0x20000;

    public const int OpenReadOnly = 0;
    public const int OpenReadWrite = 2;
    public const int OpenCreate = 0x40;
    public const int OpenExclusive = 0x80;
    public const int OpenNonBlocking = 0x800;
    public const int OpenPath = 0x200000;
    public const int OpenCloseOnExec = 0x80000;

    public const int StatusNoFollow = 0x100;
    public const int EmptyPath = 0x1000;
    public const int RemoveFolder = 0x200;
    public const uint RenameNoReplace = 1;
    public const uint RenameExchange = 2;

    public const int SeekData = 3;
    public const int SeekHole = 4;

    public const int SetSignal = 10;
    public const int SetLease = 1024;
    public const int GetLease = 1025;
    public const int ReadLease = 0;
    public const int NoLease = 2;
    public const int UrgentSignal = 23;

    public const int LockShared = 1;
    public const int LockExclusive = 2;
    public const int LockNonBlocking = 4;
    public const int Unlock = 8;

    public const nuint CloneFile = 0x40049409;

    private const nint OpenRestrictedNumber = 437;

    private const string Name = "libc";

    // Looked up in the program itself, so that a preloaded library takes part as it does in native code.
    static Libc() => NativeLibrary.SetDllImportResolver(typeof(Libc).Assembly, Resolve);

    public static UnixError LastError => (UnixError)Marshal.GetLastPInvokeError();

    /// <summary>openat2(), which has no function of its own in the C library.</summary>
    public static int OpenRestricted(SafeHandle folder, string path, in OpenHow how) =>
        (int)SystemCall(OpenRestrictedNumber, folder, path, how, sizeof(OpenHow));

    [LibraryImport(Name, EntryPoint = "syscall", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    private static partial nint SystemCall(nint number, SafeHandle folder, string path, in OpenHow how, nint size);

    [LibraryImport(Name, EntryPoint = "openat", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Open(SafeHandle folder, string path, int flags, uint mode);

    [LibraryImport(Name, EntryPoint = "openat", SetLastError = true)]
    public static partial int Open(SafeHandle folder, byte* path, int flags, uint mode);

    [LibraryImport(Name, EntryPoint = "open", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Open(string path, int flags, uint mode);

    [LibraryImport(Name, EntryPoint = "statx", SetLastError = true)]
    public static partial int Status(SafeHandle folder, byte* path, int flags, uint mask, out UnixStatus status);

    [LibraryImport(Name, EntryPoint = "statx", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Status(SafeHandle folder, string path, int flags, uint mask, out UnixStatus status);

    [LibraryImport(Name, EntryPoint = "statx", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Status(int folder, string path, int flags, uint mask, out UnixStatus status);

    [LibraryImport(Name, EntryPoint = "renameat2", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Rename(SafeHandle from, string name, SafeHandle to, string newName, uint flags);

    [LibraryImport(Name, EntryPoint = "renameat2", SetLastError = true)]
    public static partial int Rename(SafeHandle from, byte* name, SafeHandle to, byte* newName, uint flags);

    [LibraryImport(Name, EntryPoint = "linkat", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Link(SafeHandle from, string name, SafeHandle to, string newName, int flags);

    [LibraryImport(Name, EntryPoint = "unlinkat", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int Remove(SafeHandle folder, string name, int flags);

    [LibraryImport(Name, EntryPoint = "unlinkat", SetLastError = true)]
    public static partial int Remove(SafeHandle folder, byte* name, int flags);

    [LibraryImport(Name, EntryPoint = "mkdirat", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int MakeFolder(SafeHandle folder, string name, uint mode);

    [LibraryImport(Name, EntryPoint = "geteuid")]
    public static partial uint EffectiveUser();

    [LibraryImport(Name, EntryPoint = "fchmod", SetLastError = true)]
    public static partial int SetMode(SafeHandle file, uint mode);

    [LibraryImport(Name, EntryPoint = "chmod", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    public static partial int SetMode(string path, uint mode);

    [LibraryImport(Name, EntryPoint = "futimens", SetLastError = true)]
    public static partial int SetTimes(SafeHandle file, TimeSpec* times);

    [LibraryImport(Name, EntryPoint = "lseek", SetLastError = true)]
    public static partial long Seek(SafeHandle file, long offset, int whence);

    [LibraryImport(Name, EntryPoint = "ioctl", SetLastError = true)]
    public static partial int Control(SafeHandle file, nuint request, SafeHandle source);

    [LibraryImport(Name, EntryPoint = "fcntl", SetLastError = true)]
    public static partial int Control(SafeHandle file, int command, int argument);

    [LibraryImport(Name, EntryPoint = "fsync", SetLastError = true)]
    public static partial int Flush(SafeHandle file);

    [LibraryImport(Name, EntryPoint = "syncfs", SetLastError = true)]
    public static partial int FlushFileSystem(SafeHandle file);

    [LibraryImport(Name, EntryPoint = "flock", SetLastError = true)]
    public static partial int Lock(SafeHandle file, int operation);

    [LibraryImport(Name, EntryPoint = "fdopendir", SetLastError = true)]
    public static partial nint OpenList(int folder);

    [LibraryImport(Name, EntryPoint = "readdir", SetLastError = true)]
    public static partial FolderItem* ReadList(nint list);

    [LibraryImport(Name, EntryPoint = "closedir")]
    public static partial int CloseList(nint list);

    [LibraryImport(Name, EntryPoint = "close")]
    public static partial int Close(int descriptor);

    private static nint Resolve(string name, Assembly assembly, DllImportSearchPath? path) =>
        name == Name ? NativeLibrary.GetMainProgramHandle() : 0;
}

/// <summary>The argument of openat2().</summary>
internal struct OpenHow
{
    public ulong Flags;
    public ulong Mode;
    public ulong Resolve;

    public const ulong NoMagicLinks = 2;
    public const ulong NoLinks = 4;
    public const ulong Beneath = 8;
}

[StructLayout(LayoutKind.Sequential)]
internal struct TimeSpec
{
    public long Seconds;
    public long Nanoseconds;

    public const long Omit = (1L << 30) - 2;
}

/// <summary>The fields of an entry of readdir() in front of its name.</summary>
[StructLayout(LayoutKind.Explicit)]
internal struct FolderItem
{
    public const int NameOffset = 19;

    [FieldOffset(18)] public byte Type;
}
