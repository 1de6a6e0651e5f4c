using System.Collections.Concurrent;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The records of each drive as last written by any process. What is handed out for reading never changes; who changes
/// something holds the home's lock, works on a copy and saves that.
/// </summary>
internal static class IndexStore
{
    private static readonly ConcurrentDictionary<string, (FileEntry Stamp, DriveIndex Index)> Known = new();

    public static bool Exists(HomeFolder home, Guid drive) => FileProbe.Find(home.StateFileOf(drive)) is not null;

    public static DriveIndex Load(HomeFolder home, Guid drive)
    {
        var path = home.StateFileOf(drive);
        if (FileProbe.Find(path) is not { } stamp)
            return new DriveIndex();
        if (Known.TryGetValue(path, out var known) && known.Stamp == stamp)
            return known.Index;
        var index = IndexFile.Read(path);
        Known[path] = (stamp, index);
        return index;
    }

    /// <summary>Saves the records and takes them over: from now on they are handed out for reading.</summary>
    public static void Save(HomeFolder home, Guid drive, DriveIndex index)
    {
        var path = home.StateFileOf(drive);
        IndexFile.Write(home, path, index);
        index.AcceptChanges();
        if (FileProbe.Find(path) is { } stamp)
            Known[path] = (stamp, index);
    }
}
