using System.Collections.Concurrent;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The records of each drive as last written by any process. Records that were handed out for reading never change; a writer
/// holds the home's lock, changes a copy and saves it.
/// </summary>
internal static class IndexStore
{
    private static readonly ConcurrentDictionary<string, LastWritten> Known = new();

    private sealed record LastWritten(FileEntry Stamp, DriveIndex Index);

    public static bool Exists(HomeFolder home, Guid drive) => FileProbe.Exists(home.StateFileOf(drive));

    public static DriveIndex Load(HomeFolder home, Guid drive)
    {
        var path = home.StateFileOf(drive);
        HomeFile.RequireFileOrNothing(path);
        if (FileProbe.FindFollowingLinks(path) is not { } stamp)
            return new DriveIndex();
        if (Known.TryGetValue(path, out var known) && known.Stamp == stamp)
            return known.Index;
        var index = IndexFile.Read(path);
        Known[path] = new(stamp, index);
        return index;
    }

    /// <summary>Drops what is kept in memory.</summary>
    public static void ForgetAll() => Known.Clear();

    /// <summary>Saves the records and takes ownership of them: from now on they are handed out for reading.</summary>
    public static void Save(HomeFolder home, Guid drive, DriveIndex index)
    {
        var path = home.StateFileOf(drive);
        IndexFile.Write(home, path, index);
        index.AcceptChanges();
        if (FileProbe.Find(path) is { } stamp)
            Known[path] = new(stamp, index);
    }
}
