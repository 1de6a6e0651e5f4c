namespace Quorvex.Tessaport.API.Local;

/// <summary>The properties of an open file.</summary>
[StructLayout(LayoutKind.Sequential, Pack = 4)]
internal struct WindowsInformation
{
    private const uint NameSurrogate = 0x20000000;
    private const uint FirstSubsystemFile = 0x80000023;
    private const uint LastSubsystemFile = 0x80000026;

    public uint Attributes;
    public long Created;
    public long Accessed;
    public long Written;
    public uint Volume;
    public uint SizeHigh;
    public uint SizeLow;
    public uint Links;
    public uint NumberHigh;
    public uint NumberLow;

    // The number counts how often it was reused, so it needs no moment beside it.
    public readonly FileEntry ToEntry(long changed, uint tag) =>
        Entry(Attributes, ((long)SizeHigh << 32) | SizeLow, Written, changed, ((ulong)NumberHigh << 32) | NumberLow, Volume, tag);

    public static FileEntry Entry(uint attributes, long size, long written, long changed, ulong number, ulong volume, uint tag)
    {
        var kind = IsLink(tag) ? EntryKind.Other : (attributes & NativeFile.Folder) != 0 ? EntryKind.Folder : EntryKind.File;
        return new FileEntry
        {
            Kind = kind,
            Size = kind == EntryKind.File ? size : 0,
            ModifiedTime = FileTime.Of(DateTime.FromFileTimeUtc(Math.Max(written, 0))),
            ChangeTime = changed > 0 ? FileTime.Of(DateTime.FromFileTimeUtc(changed)) : default,
            Identity = new FileIdentity(number, 0),
            Device = volume,
            Mode = (int)attributes,
        };
    }

    /// <summary>
    /// Whether a file is a link or a device. Other tags mark files that are kept compressed or fetched on demand.
    /// </summary>
    public static bool IsLink(uint tag) => (tag & NameSurrogate) != 0 || tag is >= FirstSubsystemFile and <= LastSubsystemFile;
}
