namespace Quorvex.Tessaport.API.Local;

internal enum EntryKind
{
    File,
    Folder,

    /// <summary>A link, pipe, socket or device: never opened, replaced or deleted.</summary>
    Other,
}

/// <summary>The properties of one name in the file system at one moment.</summary>
internal readonly record struct FileEntry
{
    public required EntryKind Kind { get; init; }

    /// <summary>In bytes; 0 unless it is a file.</summary>
    public long Size { get; init; }

    /// <summary>The last write, which programs can set.</summary>
    public FileTime ModifiedTime { get; init; }

    /// <summary>
    /// The last change of content, attributes or name, which programs cannot set; unknown on some file systems.
    /// </summary>
    public FileTime ChangeTime { get; init; }

    public FileIdentity Identity { get; init; }

    /// <summary>The file system on which it is stored.</summary>
    public ulong Device { get; init; }

    /// <summary>The permission bits on Unix, the attributes on Windows.</summary>
    public int Mode { get; init; }

    public bool IsFolder => Kind == EntryKind.Folder;

    public DateTime Modified => ModifiedTime.ToDateTime();

    // The one that the compiler makes needs comparers of these types, for which the runtime has no code in advance.
    public bool Equals(FileEntry other) =>
        Kind == other.Kind && Size == other.Size && ModifiedTime == other.ModifiedTime && ChangeTime == other.ChangeTime
        && Identity == other.Identity && Device == other.Device && Mode == other.Mode;

    public override int GetHashCode() => HashCode.Combine(Size, Device, Mode, Identity.Number);

    /// <summary>
    /// Whether this is the version that `earlier` was, apart from its name and permissions. The file system counts a rename as a
    /// change, so the change time cannot be compared after one.
    /// </summary>
    public bool IsSameVersion(FileEntry earlier) =>
        Kind == earlier.Kind && Size == earlier.Size && ModifiedTime == earlier.ModifiedTime && Identity == earlier.Identity;

    /// <summary>Whether nothing happened to the file since it was `earlier`, as far as the file system shows.</summary>
    public bool IsUnchangedSince(FileEntry earlier) =>
        IsSameVersion(earlier) && (ChangeTime == earlier.ChangeTime || !ChangeTime.IsKnown || !earlier.ChangeTime.IsKnown);
}
