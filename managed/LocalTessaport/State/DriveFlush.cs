namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Has the files and names of a drive on the disk before anything is that relies on them. A power failure could otherwise leave records
/// that call a version synced, and another version under its name, which the next sync would take for an edit.
/// </summary>
internal static class DriveFlush
{
    // For fewer items, flushing each costs less than flushing the file systems with the data of other programs.
    private const int MostAlone = 16;

    /// <summary>Flushes what changed records speak of.</summary>
    /// <exception cref="IOException">Something could not be flushed; the records must not be saved.</exception>
    public static void Run(LocalDrive drive, ChangedPaths changed)
    {
        if (changed.Count == 0)
            return;
        foreach (var side in SideNames.Both)
            Run(drive.Side(side), changed);
    }

    /// <summary>Flushes the names in a folder.</summary>
    public static void Names(DriveSide side, string folder)
    {
        if (!side.TryFlushNames(folder))
            side.TryFlushFileSystem();
    }

    private static void Run(DriveSide side, ChangedPaths changed)
    {
        if (changed.Count > MostAlone && side.TryFlushFileSystem())
            return;
        var paths = changed.Distinct();
        var folders = paths.Select(RelativePath.FolderOf).ToHashSet(RelativePath.Comparer);
        if (!paths.All(side.TryFlush) || !folders.All(side.TryFlushNames))
            side.TryFlushFileSystem();
    }
}
