namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// What was synced, as it was read from the file: the records of each folder stay bytes until one of them is asked for. It never
/// changes, and can be used by several threads.
/// </summary>
internal sealed class StoredRecords : IStoredRecords<string, SyncedRecord>
{
    private readonly string _name;
    private readonly List<StoredFolder> _folders;
    private readonly Dictionary<string, StoredFolder> _byPath;
    private StoredFolder? _last;

    /// <param name="content">The file.</param>
    /// <param name="name">Its name, for what is thrown if a record turns out to be invalid.</param>
    /// <param name="from">At the number of folders; afterwards at the end of the last one.</param>
    public StoredRecords(byte[] content, string name, ref RecordReader from)
    {
        _name = name;
        var folders = from.Count();
        _folders = new(folders);
        _byPath = new(folders, RelativePath.Comparer);
        for (; folders > 0; --folders)
            Add(content, ref from);
    }

    public int Count { get; private set; }

    public SyncedRecord? Find(string path)
    {
        var split = path.LastIndexOf('\\');
        try
        {
            for (var folder = FolderAt(path.AsSpan(0, Math.Max(split, 0))); folder is not null; folder = folder.OtherSpelling)
            {
                if (folder.Find(path.AsSpan(split + 1)) is { } found)
                    return found;
            }
            return null;
        }
        catch (FormatException e)
        {
            throw IndexFile.Unreadable(_name, e);
        }
    }

    public IEnumerable<SyncedRecord> All()
    {
        foreach (var folder in _folders)
        {
            var position = folder.Start;
            for (var left = folder.Count; left > 0; --left)
                yield return Next(folder, ref position);
        }
    }

    private void Add(byte[] content, ref RecordReader from)
    {
        var path = from.String();
        var count = from.Count();
        var length = from.Count();
        var folder = new StoredFolder(content, path, count, from.Position, from.Position + length);
        from.Skip(length);
        // Two spellings of one folder, which can be recorded where case does not matter.
        if (_byPath.TryGetValue(path, out var other))
            folder.OtherSpelling = other;
        _byPath[path] = folder;
        _folders.Add(folder);
        Count += count;
    }

    /// <summary>The records of the files and folders directly in a folder; null if it has none.</summary>
    // Most lookups are in the folder of the one before.
    public StoredFolder? FolderAt(ReadOnlySpan<char> path)
    {
        var last = _last;
        if (last is null || !path.SequenceEqual(last.Path))
            _last = last = _byPath.GetValueOrDefault(path.ToString());
        return last;
    }

    private SyncedRecord Next(StoredFolder folder, ref int position)
    {
        try
        {
            var from = folder.ReaderAt(position);
            var record = SyncedEntry.Read(ref from, RelativePath.Join(folder.Path, from.String()));
            position = from.Position;
            return record;
        }
        catch (FormatException e)
        {
            throw IndexFile.Unreadable(_name, e);
        }
    }
}
