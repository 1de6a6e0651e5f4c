namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Keeps files that are as last synced on both sides out of what is read of a folder. In most drives that is nearly all, and
/// comparing them with the stored records takes much less than making objects of both.
/// </summary>
internal sealed class SyncedFiles : IEntryFilter
{
    private readonly StoredRecords _records;
    private readonly Predicate<string>? _isNoted;
    private StoredFolder? _folder;
    private SideName _side;

    // By the number of the record: what was seen of the file, and its entry in the workspace.
    private Seen[]? _seen;
    private FileEntry[]? _here;

    private enum Seen : byte
    {
        Nothing,

        /// <summary>The file in the workspace is as last synced. If the one on the server is not, a node is needed for both.</summary>
        SyncedHere,
        SyncedOnBoth,
    }

    /// <param name="records">What was synced.</param>
    /// <param name="isNoted">Whether more is known of the item at a path, so that it is kept; null if that is so for none.</param>
    public SyncedFiles(StoredRecords records, Predicate<string>? isNoted)
    {
        _records = records;
        _isNoted = isNoted;
    }

    /// <summary>Turns to a folder.</summary>
    public void Begin(string path)
    {
        // The same folder in two spellings is rare, and can be compared with objects.
        _folder = _records.FolderAt(path) is { OtherSpelling: null } found ? found : null;
        var count = _folder?.Count ?? 0;
        if (_seen is null || _seen.Length < count)
            (_seen, _here) = (new Seen[count], new FileEntry[count]);
        Array.Clear(_seen, 0, count);
    }

    /// <summary>The filter for one side of the folder; the workspace comes first.</summary>
    public IEntryFilter? On(SideName side)
    {
        _side = side;
        return _folder is null ? null : this;
    }

    public bool LeavesOut(ReadOnlySpan<char> name, in FileEntry entry)
    {
        if (entry.Kind != EntryKind.File || _folder!.NumberOf(name) is not (>= 0 and var number))
            return false;
        var isSynced = _folder.IsSynced(number, _side, entry) && !IsNoted(name);
        if (_side == SideName.Workspace)
        {
            _seen![number] = isSynced ? Seen.SyncedHere : Seen.Nothing;
            _here![number] = entry;
            return isSynced;
        }
        if (_seen![number] == Seen.Nothing)
            return false;
        // A folder that is changed while it is read can show the same name twice.
        _seen[number] = isSynced ? Seen.SyncedOnBoth : Seen.SyncedHere;
        return isSynced;
    }

    /// <summary>Takes back what was seen of the current side, which could not be read to its end.</summary>
    public void Withdraw()
    {
        for (var number = 0; number < (_folder?.Count ?? 0); ++number)
        {
            if (_side == SideName.Workspace)
                _seen![number] = Seen.Nothing;
            else if (_seen![number] == Seen.SyncedOnBoth)
                _seen[number] = Seen.SyncedHere;
        }
    }

    /// <summary>Makes nodes of the files that turned out to be as synced in the workspace only.</summary>
    public void PutBack(SnapshotNode folder)
    {
        for (var number = 0; number < (_folder?.Count ?? 0); ++number)
        {
            if (_seen![number] == Seen.SyncedHere)
                folder.GetOrAdd(_folder!.NameAt(number))[SideName.Workspace] = _here![number];
        }
    }

    private bool IsNoted(ReadOnlySpan<char> name) => _isNoted is not null && _isNoted(RelativePath.Join(_folder!.Path, name.ToString()));
}
