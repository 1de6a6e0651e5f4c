namespace Quorvex.Tessaport.API.Local;

/// <summary>Finds records by the file they are about. A file with several names, that is hard links, can have several records.</summary>
internal sealed class IdentityMap<TRecord> where TRecord : class
{
    private readonly Dictionary<FileIdentity, TRecord> _first;
    private readonly Func<TRecord, string> _pathOf;

    // Files with several names are rare: only of those there is a list.
    private Dictionary<FileIdentity, List<TRecord>>? _shared;

    public IdentityMap(int capacity, Func<TRecord, string> pathOf)
    {
        _first = new(capacity);
        _pathOf = pathOf;
    }

    /// <summary>The record of the first name, so that it does not depend on the order in which the records came.</summary>
    public TRecord? First(FileIdentity identity) => _first.GetValueOrDefault(identity);

    /// <summary>All of them, by name.</summary>
    public IReadOnlyList<TRecord> All(FileIdentity identity) =>
        _shared is not null && _shared.TryGetValue(identity, out var all) ? all
        : First(identity) is { } only ? [only]
        : [];

    public void Add(FileIdentity identity, TRecord record)
    {
        if (!identity.IsKnown || _first.TryAdd(identity, record))
            return;
        _shared ??= [];
        if (!_shared.TryGetValue(identity, out var all))
            _shared[identity] = all = [_first[identity]];
        var place = all.FindIndex(other => string.CompareOrdinal(_pathOf(other), _pathOf(record)) > 0);
        all.Insert(place < 0 ? all.Count : place, record);
        _first[identity] = all[0];
    }

    /// <summary>Removes a record; another one of the same file stays.</summary>
    public void Remove(FileIdentity identity, TRecord record)
    {
        if (_shared is not null && _shared.TryGetValue(identity, out var all))
        {
            all.Remove(record);
            _first[identity] = all[0];
            if (all.Count == 1)
                _shared.Remove(identity);
        }
        else if (_first.GetValueOrDefault(identity) is { } only && only.Equals(record))
        {
            _first.Remove(identity);
        }
    }
}
