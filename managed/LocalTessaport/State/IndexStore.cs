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

    public static bool Exists(HomeFolder home, Guid drive) =>
        FileProbe.Exists(home.StateFileOf(drive)) || FileProbe.Exists(home.EarlierStateFileOf(drive)) || FileProbe.Exists(home.StateFileOf(drive));

    public static DriveIndex Load(HomeFolder home, Guid drive)
    {
        while (Find(home, drive) is var (path, stamp))
        {
            if (Known.TryGetValue(path, out var known) && known.Stamp == stamp)
                return known.Index;
            try
            {
                var index = IndexFile.Read(path);
                Known[path] = new(stamp, index);
                return index;
            }
            catch (FileNotFoundException) when (path == home.EarlierStateFileOf(drive))
            {
                // Another process has replaced it.
            }
        }
        return new DriveIndex();
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
        RemoveEarlier(home, drive);
    }

    // Another process may replace the earlier file by the later one between two looks.
    private static (string Path, FileEntry Stamp)? Find(HomeFolder home, Guid drive) =>
        At(home.StateFileOf(drive)) ?? At(home.EarlierStateFileOf(drive)) ?? At(home.StateFileOf(drive));

    private static (string Path, FileEntry Stamp)? At(string path)
    {
        HomeFile.RequireFileOrNothing(path);
        return FileProbe.FindFollowingLinks(path) is { } stamp ? (path, stamp) : null;
    }

    // It is not read any more. If it cannot be removed now, it is after the next change.
    private static void RemoveEarlier(HomeFolder home, Guid drive)
    {
        var path = home.EarlierStateFileOf(drive);
        Known.TryRemove(path, out _);
        if (FileProbe.Find(path) is not { Kind: EntryKind.File })
            return;
        try
        {
            File.Delete(path);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }
}
