namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The result of statx(): kind, size, times and number of a file. The layout is the kernel's, on every architecture.
/// </summary>
[StructLayout(LayoutKind.Explicit, Size = 256)]
internal struct UnixStatus
{
    public const uint BasicAndBirth = 0xfff;

    private const uint Birth = 0x800;
    private const int TypeMask = 0xf000;
    private const int TypeFolder = 0x4000;
    private const int TypeFile = 0x8000;
    private const int PermissionMask = 0xfff;

    [FieldOffset(0)] private readonly uint _mask;
    [FieldOffset(20)] private readonly uint _owner;
    [FieldOffset(28)] private readonly ushort _mode;
    [FieldOffset(32)] private readonly ulong _number;
    [FieldOffset(40)] private readonly ulong _size;
    [FieldOffset(80)] private readonly Moment _born;
    [FieldOffset(96)] private readonly Moment _changed;
    [FieldOffset(112)] private readonly Moment _modified;
    [FieldOffset(136)] private readonly uint _deviceMajor;
    [FieldOffset(140)] private readonly uint _deviceMinor;

    /// <summary>The creation time, or the last-write time if the file system does not store it.</summary>
    public readonly FileTime Created => ((_mask & Birth) != 0 ? _born : _modified).ToFileTime();

    public readonly uint Owner => _owner;

    public readonly uint Mode => (uint)_mode & PermissionMask;

    public readonly FileEntry ToEntry()
    {
        var kind = (_mode & TypeMask) switch
        {
            TypeFile => EntryKind.File,
            TypeFolder => EntryKind.Folder,
            _ => EntryKind.Other,
        };
        return new FileEntry
        {
            Kind = kind,
            Size = kind == EntryKind.File ? (long)_size : 0,
            ModifiedTime = _modified.ToFileTime(),
            ChangeTime = _changed.ToFileTime(),
            Identity = Identity(),
            Device = ((ulong)_deviceMajor << 32) | _deviceMinor,
            Mode = _mode & PermissionMask,
        };
    }

    // Numbers are reused. Where the file system stores no creation time, the last change serves instead: a file that was changed
    // and moved is then found by other means, but no file is taken for another one.
    private readonly FileIdentity Identity() => new(_number, Created.ToNanoseconds());

    [StructLayout(LayoutKind.Sequential)]
    private struct Moment
    {
        public long Seconds;
        public uint Nanoseconds;
        public int Reserved;

        public readonly FileTime ToFileTime() => new(Seconds, (int)Nanoseconds);
    }
}
