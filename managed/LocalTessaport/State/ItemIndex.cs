using System;
using System.Collections.Generic;
using System.Linq;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The records of one drive, findable by everything that tells an item.</summary>
internal sealed class ItemIndex
{
    private readonly Dictionary<Guid, ItemRecord> _byToken;
    private readonly Dictionary<string, Guid> _byPath;
    private readonly Dictionary<FileIdentity, Guid> _byLocal;
    private readonly Dictionary<FileIdentity, Guid> _byRemote;

    public ItemIndex()
    {
        _byToken = [];
        _byPath = new(RelativePath.Comparer);
        _byLocal = [];
        _byRemote = [];
    }

    private ItemIndex(ItemIndex other)
    {
        _byToken = new(other._byToken);
        _byPath = new(other._byPath, RelativePath.Comparer);
        _byLocal = new(other._byLocal);
        _byRemote = new(other._byRemote);
    }

    public bool IsChanged { get; private set; }

    public IEnumerable<ItemRecord> Records => _byToken.Values;

    /// <summary>A copy to be changed while this one is read.</summary>
    public ItemIndex Clone() => new(this);

    public ItemRecord? ByToken(Guid token) => _byToken.GetValueOrDefault(token);

    public ItemRecord? ByPath(string path) => Follow(_byPath, path);

    public ItemRecord? ByLocal(FileIdentity? identity) => identity is { IsKnown: true } known ? Follow(_byLocal, known) : null;

    public ItemRecord? ByRemote(FileIdentity? identity) => identity is { IsKnown: true } known ? Follow(_byRemote, known) : null;

    public void Put(ItemRecord record)
    {
        if (_byToken.TryGetValue(record.Token, out var earlier))
        {
            if (earlier == record)
                return;
            Forget(earlier);
        }
        IsChanged = true;
        _byToken[record.Token] = record;
        _byPath[record.Path] = record.Token;
        if (record.Workspace.IsKnown)
            _byLocal[record.Workspace] = record.Token;
        if (record.Server.IsKnown)
            _byRemote[record.Server] = record.Token;
    }

    public void Remove(ItemRecord record)
    {
        if (!_byToken.Remove(record.Token, out var current))
            return;
        Forget(current);
        IsChanged = true;
    }

    public List<ItemRecord> Beneath(string folder) =>
        _byToken.Values.Where(record => RelativePath.IsBeneath(record.Path, folder)).ToList();

    /// <summary>Notes that a folder with everything in it now has another path.</summary>
    public void MoveContents(string from, string to)
    {
        foreach (var record in Beneath(from))
            Put(record with { Path = to + record.Path[from.Length..] });
    }

    private ItemRecord? Follow<TKey>(Dictionary<TKey, Guid> keys, TKey key) where TKey : notnull =>
        keys.TryGetValue(key, out var token) ? _byToken.GetValueOrDefault(token) : null;

    private void Forget(ItemRecord record)
    {
        Forget(_byPath, record.Path, record.Token);
        Forget(_byLocal, record.Workspace, record.Token);
        Forget(_byRemote, record.Server, record.Token);
    }

    // A key may have gone over to another record in the meantime, as when two files swap their names.
    private static void Forget<TKey>(Dictionary<TKey, Guid> keys, TKey key, Guid token) where TKey : notnull
    {
        if (keys.TryGetValue(key, out var holder) && holder == token)
            keys.Remove(key);
    }
}
