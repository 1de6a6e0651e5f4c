namespace Quorvex.Tessaport.API.Local;

/// <summary>The calls of Windows that .NET does not offer: everything relative to an open folder.</summary>
internal static unsafe partial class NativeFile
{
    public const uint ReadData = 0x1;
    public const uint WriteData = 0x2;
    public const uint Traverse = 0x20;
    public const uint ReadAttributes = 0x80;
    public const uint WriteAttributes = 0x100;
    public const uint Delete = 0x10000;
    public const uint Synchronize = 0x100000;

    public const uint ShareRead = 1;
    public const uint ShareDelete = 4;
    public const uint ShareAll = 7;

    public const uint OpenExisting = 1;
    public const uint CreateNew = 2;

    public const uint FolderOnly = 0x1;
    public const uint SynchronousIO = 0x20;
    public const uint FileOnly = 0x40;
    public const uint BackupIntent = 0x4000;
    public const uint OpenLinkItself = 0x200000;

    public const uint Hidden = 0x2;
    public const uint Folder = 0x10;
    public const uint Normal = 0x80;
    public const uint Reparse = 0x400;

    private const uint IgnoreCase = 0x40;
    private const int BasicInformation = 4;
    private const int RenameInformation = 10;
    private const int DispositionInformation = 13;
    private const int FolderInformation = 37;
    private const int TagInformation = 9;
    private const int TimeInformation = 0;

    /// <summary>Opens or creates the item with a name in an open folder; an empty name means the folder itself.</summary>
    public static WindowsStatus Open(
        SafeHandle folder, string name, uint access, uint share, uint disposition, uint options, uint attributes, out SafeFileHandle handle)
    {
        var isHeld = false;
        folder.DangerousAddRef(ref isHeld);
        try
        {
            fixed (char* characters = name)
            {
                var pattern = new NativeString { Length = (ushort)(name.Length * 2), Capacity = (ushort)(name.Length * 2), Characters = characters };
                var place = new Place { Size = sizeof(Place), Root = folder.DangerousGetHandle(), Name = &pattern, Attributes = IgnoreCase };
                var status = Create(out var opened, access | Synchronize, place, out _, null, attributes, share, disposition,
                    options | SynchronousIO | BackupIntent, null, 0);
                handle = new SafeFileHandle(status == WindowsStatus.Success ? opened : -1, ownsHandle: true);
                return status;
            }
        }
        finally
        {
            folder.DangerousRelease();
        }
    }

    /// <summary>Renames an open file or folder, without replacing anything.</summary>
    public static WindowsStatus Rename(SafeHandle file, SafeHandle folder, string name)
    {
        var isHeld = false;
        folder.DangerousAddRef(ref isHeld);
        try
        {
            var buffer = new byte[sizeof(RenameHead) + name.Length * 2];
            MemoryMarshal.Cast<char, byte>(name.AsSpan()).CopyTo(buffer.AsSpan(RenameHead.NameOffset));
            fixed (byte* start = buffer)
            {
                var head = (RenameHead*)start;
                head->Root = folder.DangerousGetHandle();
                head->NameLength = name.Length * 2;
                return Set(file, out _, start, (uint)buffer.Length, RenameInformation);
            }
        }
        finally
        {
            folder.DangerousRelease();
        }
    }

    /// <summary>Has an open file or empty folder deleted when it is closed, even if it is write-protected.</summary>
    public static WindowsStatus Remove(SafeHandle file)
    {
        var basic = new Basic { Attributes = Normal };
        Set(file, out _, &basic, (uint)sizeof(Basic), BasicInformation);
        byte delete = 1;
        return Set(file, out _, &delete, 1, DispositionInformation);
    }

    public static WindowsStatus SetModified(SafeHandle file, long time)
    {
        var basic = new Basic { Written = time };
        return Set(file, out _, &basic, (uint)sizeof(Basic), BasicInformation);
    }

    /// <summary>Reads the next names of an open folder; only the first call uses the filter.</summary>
    public static WindowsStatus List(SafeHandle folder, byte[] buffer, string? filter)
    {
        fixed (byte* start = buffer)
        fixed (char* characters = filter)
        {
            var length = (ushort)((filter?.Length ?? 0) * 2);
            var pattern = new NativeString { Length = length, Capacity = length, Characters = characters };
            return Query(folder, 0, 0, 0, out _, start, (uint)buffer.Length, FolderInformation, 0, filter is null ? null : &pattern, 0);
        }
    }

    /// <summary>The reparse tag of an open file; 0 if it has none.</summary>
    public static uint TagOf(SafeHandle file) => InformEx(file, TagInformation, out AttributeTag tag, sizeof(AttributeTag)) ? tag.Tag : 0;

    /// <summary>The change time of an open file; 0 if the system does not store it.</summary>
    public static long ChangeTimeOf(SafeHandle file) =>
        InformEx(file, TimeInformation, out Basic basic, sizeof(Basic)) ? basic.Changed : 0;

    [LibraryImport("ntdll", EntryPoint = "NtCreateFile")]
    private static partial WindowsStatus Create(out nint handle, uint access, in Place place, out IoStatus io, long* size, uint attributes,
        uint share, uint disposition, uint options, void* extended, uint extendedLength);

    [LibraryImport("ntdll", EntryPoint = "NtSetInformationFile")]
    private static partial WindowsStatus Set(SafeHandle file, out IoStatus io, void* information, uint length, int kind);

    [LibraryImport("ntdll", EntryPoint = "NtQueryDirectoryFile")]
    private static partial WindowsStatus Query(SafeHandle folder, nint e, nint routine, nint context, out IoStatus io, void* buffer,
        uint length, int kind, byte single, NativeString* filter, byte restart);

    [LibraryImport("ntdll", EntryPoint = "RtlNtStatusToDosError")]
    public static partial int ToError(WindowsStatus status);

    [LibraryImport("kernel32", EntryPoint = "CreateFileW", SetLastError = true, StringMarshalling = StringMarshalling.Utf16)]
    public static partial SafeFileHandle OpenPath(string path, uint access, uint share, nint security, uint creation, uint flags, nint template);

    [LibraryImport("kernel32", EntryPoint = "GetFileInformationByHandle", SetLastError = true)]
    [return: MarshalAs(UnmanagedType.Bool)]
    public static partial bool Inform(SafeHandle file, out WindowsInformation information);

    [LibraryImport("kernel32", EntryPoint = "GetFileInformationByHandleEx", SetLastError = true)]
    [return: MarshalAs(UnmanagedType.Bool)]
    private static partial bool InformEx(SafeHandle file, int kind, out AttributeTag tag, int length);

    [LibraryImport("kernel32", EntryPoint = "GetFileInformationByHandleEx", SetLastError = true)]
    [return: MarshalAs(UnmanagedType.Bool)]
    private static partial bool InformEx(SafeHandle file, int kind, out Basic basic, int length);

    [StructLayout(LayoutKind.Sequential)]
    private struct NativeString
    {
        public ushort Length;
        public ushort Capacity;
        public char* Characters;
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct Place
    {
        public int Size;
        public nint Root;
        public NativeString* Name;
        public uint Attributes;
        public nint Descriptor;
        public nint Quality;
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct IoStatus
    {
        public nint Status;
        public nint Information;
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct RenameHead
    {
        public const int NameOffset = 20;

        public long Replace;
        public nint Root;
        public int NameLength;
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct Basic
    {
        public long Created;
        public long Read;
        public long Written;
        public long Changed;
        public uint Attributes;
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct AttributeTag
    {
        public uint Attributes;
        public uint Tag;
    }
}
