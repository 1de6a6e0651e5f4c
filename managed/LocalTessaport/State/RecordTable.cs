namespace Quorvex.Tessaport.API.Local;

/// <summary>A record of something with a path and a file on one or both sides.</summary>
internal interface ITrackedRecord<TKey>
{
    TKey Key { get; }
    string Path { get; }
    bool IsFolder { get; }
    FileIdentity Local { get; }
    FileIdentity Remote { get; }
}

/// <summary>Records that can be found by each thing that tells them.</summary>
internal sealed class RecordTable<TKey, TRecord> where TKey : notnull where TRecord : class, ITrackedRecord<TKey>
{
    private readonly Dictionary<TKey, TRecord> _byKey;
    private readonly Dictionary<string, TKey> _byPath;
    private readonly Dictionary<FileIdentity, TKey> _byLocal;
    private readonly Dictionary<FileIdentity, TKey> _byRemote;

    // Made at the first question for what is below a folder: few requests ask.
    private PathTree? _paths;

    public RecordTable(IEqualityComparer<TKey> comparer)
    {
        _byKey = new(comparer);
        _byPath = new(RelativePath.Comparer);
        _byLocal = [];
        _byRemote = [];
    }

    private RecordTable(RecordTable<TKey, TRecord> other)
    {
        _byKey = new(other._byKey, other._byKey.Comparer);
        _byPath = new(other._byPath, other._byPath.Comparer);
        _byLocal = new(other._byLocal);
        _byRemote = new(other._byRemote);
    }

    /// <summary>Whether anything was put or removed since the table was made.</summary>
    public bool IsChanged { get; private set; }

    public IReadOnlyCollection<TRecord> Records => _byKey.Values;

    public RecordTable<TKey, TRecord> Clone() => new(this);

    /// <summary>Notes that the records are saved as they are now.</summary>
    public void AcceptChanges() => IsChanged = false;

    public TRecord? ByKey(TKey key) => _byKey.GetValueOrDefault(key);

    public TRecord? ByPath(string path) => Follow(_byPath, path);

    public TRecord? ByLocal(FileIdentity? identity) => identity is { IsKnown: true } known ? Follow(_byLocal, known) : null;

    public TRecord? ByRemote(FileIdentity? identity) => identity is { IsKnown: true } known ? Follow(_byRemote, known) : null;

    public TRecord? ByIdentity(SideName side, FileIdentity? identity) =>
        side == SideName.Workspace ? ByLocal(identity) : ByRemote(identity);

    public List<TRecord> Below(string folder)
    {
        if (_paths is null)
        {
            _paths = new PathTree();
            foreach (var path in _byPath.Keys)
                _paths.Add(path);
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
        if (_byKey.TryGetValue(record.Key, out var earlier))
        {
            if (earlier.Equals(record))
                return;
            ForgetKeys(earlier);
        }
        IsChanged = true;
        _byKey[record.Key] = record;
        _byPath[record.Path] = record.Key;
        _paths?.Add(record.Path);
        if (record.Local.IsKnown)
            _byLocal[record.Local] = record.Key;
        if (record.Remote.IsKnown)
            _byRemote[record.Remote] = record.Key;
    }

    public void Remove(TRecord record)
    {
        if (!_byKey.Remove(record.Key, out var current))
            return;
        ForgetKeys(current);
        IsChanged = true;
    }

    private TRecord? Follow<TText>(Dictionary<TText, TKey> keys, TText text) where TText : notnull =>
        keys.TryGetValue(text, out var key) ? _byKey.GetValueOrDefault(key) : null;

    private void ForgetKeys(TRecord record)
    {
        Forget(_byPath, record.Path, record.Key);
        if (!_byPath.ContainsKey(record.Path))
            _paths?.Remove(record.Path);
        Forget(_byLocal, record.Local, record.Key);
        Forget(_byRemote, record.Remote, record.Key);
    }

    // What led here may lead to another record in the meantime, as when two files swap their names.
    private void Forget<TText>(Dictionary<TText, TKey> keys, TText text, TKey key) where TText : notnull
    {
        if (keys.TryGetValue(text, out var holder) && _byKey.Comparer.Equals(holder, key))
            keys.Remove(text);
    }
}
