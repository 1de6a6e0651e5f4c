namespace Quorvex.Tessaport.API.Local;

/// <summary>A record of something with a path and a file on one or both sides.</summary>
internal interface ITrackedRecord<TKey>
{
    TKey Key { get; }
    string Path { get; }
    bool IsFolder { get; }
    FileIdentity Local { get; }
    FileIdentity Remote { get; }

    FileIdentity IdentityOn(SideName side) => side == SideName.Workspace ? Local : Remote;
}

/// <summary>
/// Records that can be found by key, by path and by the file on either side. Only the keys are always stored; the others are
/// built on first use, because most requests need only keys and a drive can have a hundred thousand records.
/// </summary>
internal sealed class RecordTable<TKey, TRecord> where TKey : notnull where TRecord : class, ITrackedRecord<TKey>
{
    private readonly IEqualityComparer<TKey> _comparer;
    private readonly IStoredRecords<TKey, TRecord>? _stored;
    private Dictionary<TKey, TRecord>? _byKey;
    private readonly IdentityMap<TRecord>?[] _byIdentity = new IdentityMap<TRecord>?[2];
    private Dictionary<string, TRecord>? _byPath;
    private PathTree? _paths;

    public RecordTable(IEqualityComparer<TKey> comparer)
    {
        _comparer = comparer;
        _byKey = new(comparer);
    }

    /// <summary>A table that reads stored records when they are asked for, and makes all of them objects when one is changed.</summary>
    public RecordTable(IEqualityComparer<TKey> comparer, IStoredRecords<TKey, TRecord> stored)
    {
        _comparer = comparer;
        _stored = stored;
    }

    private RecordTable(RecordTable<TKey, TRecord> other)
    {
        _comparer = other._comparer;
        _stored = other._stored;
        _byKey = other._byKey is { } records ? new(records, _comparer) : null;
    }

    /// <summary>Whether anything was put or removed since the table was made.</summary>
    public bool IsChanged => Changed.Count > 0;

    /// <summary>The paths of what was put or removed since then.</summary>
    public ChangedPaths Changed { get; } = new();

    /// <summary>Where the records are stored; null if they are objects already.</summary>
    public IStoredRecords<TKey, TRecord>? Stored => _byKey is null ? _stored : null;

    public int Count => _byKey?.Count ?? _stored!.Count;

    public IEnumerable<TRecord> Records => _byKey?.Values ?? _stored!.All();

    public RecordTable<TKey, TRecord> Clone() => new(this);

    /// <summary>Marks the records as saved.</summary>
    public void AcceptChanges() => Changed.Clear();

    public TRecord? ByKey(TKey key) => _byKey is { } records ? records.GetValueOrDefault(key) : _stored!.Find(key);

    public TRecord? ByPath(string path) => path is TKey key ? ByKey(key) : (_byPath ??= Paths()).GetValueOrDefault(path);

    /// <summary>The record of a file on one side; of a file with several names, the one of the first name that has a record.</summary>
    public TRecord? ByIdentity(SideName side, FileIdentity? identity) => MapFor(side, identity)?.First(identity!.Value);

    /// <summary>The records of a file on one side: one for each of its names that has one, in their order.</summary>
    public IReadOnlyList<TRecord> AllByIdentity(SideName side, FileIdentity identity) => MapFor(side, identity)?.All(identity) ?? [];

    /// <summary>The record of the file that is on one side of an item.</summary>
    public TRecord? BySide(SideName side, ItemView view) => ByIdentity(side, view.On(side)?.Identity);

    public List<TRecord> Below(string folder)
    {
        if (_paths is null)
        {
            _byPath ??= Paths();
            _paths = new PathTree();
            foreach (var record in Loaded().Values)
                _paths.Add(record.Path);
        }
        var found = new List<TRecord>();
        foreach (var path in _paths.Below(folder))
        {
            if (ByPath(path) is { } record)
                found.Add(record);
        }
        return found;
    }

    public void Put(TRecord record)
    {
        if (ByKey(record.Key) is { } earlier)
        {
            if (earlier.Equals(record))
                return;
            Forget(earlier);
        }
        Changed.Add(record.Path);
        Loaded()[record.Key] = record;
        _paths?.Add(record.Path);
        if (_byPath is not null)
            _byPath[record.Path] = record;
        foreach (var side in SideNames.Both)
            _byIdentity[(int)side]?.Add(record.IdentityOn(side), record);
    }

    public void Remove(TRecord record)
    {
        if (ByKey(record.Key) is not { } current)
            return;
        Loaded().Remove(record.Key);
        Forget(current);
        Changed.Add(current.Path);
    }

    // The other ways to find a record lead to the same objects.
    private Dictionary<TKey, TRecord> Loaded()
    {
        if (_byKey is { } loaded)
            return loaded;
        var records = new Dictionary<TKey, TRecord>(_stored!.Count, _comparer);
        foreach (var record in _stored.All())
            records[record.Key] = record;
        return _byKey = records;
    }

    private IdentityMap<TRecord>? MapFor(SideName side, FileIdentity? identity) =>
        identity is { IsKnown: true } && Count > 0 ? _byIdentity[(int)side] ??= Identities(side) : null;

    private Dictionary<string, TRecord> Paths()
    {
        var records = new Dictionary<string, TRecord>(Count, RelativePath.Comparer);
        foreach (var record in Loaded().Values)
            records[record.Path] = record;
        return records;
    }

    private IdentityMap<TRecord> Identities(SideName side)
    {
        var records = new IdentityMap<TRecord>(Count, static record => record.Path);
        foreach (var record in Loaded().Values)
            records.Add(record.IdentityOn(side), record);
        return records;
    }

    private void Forget(TRecord record)
    {
        // The entry may refer to another record by now, for example after two files swapped their names.
        if (_byPath is not null && _byPath.TryGetValue(record.Path, out var holder) && holder == record)
        {
            _byPath.Remove(record.Path);
            _paths?.Remove(record.Path);
        }
        foreach (var side in SideNames.Both)
            _byIdentity[(int)side]?.Remove(record.IdentityOn(side), record);
    }
}
