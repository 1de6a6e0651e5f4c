namespace Quorvex.Tessaport.API.Local;

/// <summary>Tells one version of a file from another without reading it.</summary>
/// <param name="Size">In bytes.</param>
/// <param name="Modified">The last write, which programs can set.</param>
/// <param name="Changed">The last change, which programs cannot set.</param>
/// <param name="IsSettled">Whether any later change is certain to show in the times.</param>
internal readonly record struct VersionStamp(long Size, FileTime Modified, FileTime Changed, bool IsSettled);

/// <summary>A version of a file, and the moment at which it was seen.</summary>
internal readonly record struct SeenVersion(FileEntry Entry, bool IsSettled)
{
    // The clock that file systems use advances in steps of up to ten milliseconds, on some of them two seconds.
    private static readonly TimeSpan FineStep = TimeSpan.FromMilliseconds(20);
    private static readonly TimeSpan CoarseStep = TimeSpan.FromSeconds(2.5);

    public VersionStamp Stamp => new(Entry.Size, Entry.ModifiedTime, Entry.ChangeTime, IsSettled);

    /// <summary>A version that others may be writing to now.</summary>
    public static SeenVersion Now(FileEntry entry) => new(entry, IsPast(entry.ModifiedTime) && IsPast(entry.ChangeTime));

    /// <summary>A version that the service has just put there; that alone made its change time recent.</summary>
    public static SeenVersion Placed(FileEntry entry) => new(entry, IsPast(entry.ModifiedTime));

    private static bool IsPast(FileTime time) =>
        DateTime.UtcNow - time.ToDateTime() > (time.Nanoseconds == 0 ? CoarseStep : FineStep);
}
