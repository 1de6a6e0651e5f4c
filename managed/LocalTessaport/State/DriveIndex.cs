namespace Quorvex.Tessaport.API.Local;

/// <summary>Everything that the service remembers of one drive.</summary>
internal sealed class DriveIndex
{
    public DriveIndex()
        : this(new(EqualityComparer<Guid>.Default), new(RelativePath.Comparer), new FailureTable())
    {
    }

    public DriveIndex(RecordTable<Guid, ItemRecord> items, RecordTable<string, SyncedRecord> synced, FailureTable failures)
    {
        Items = items;
        Synced = synced;
        Failures = failures;
    }

    /// <summary>The items that were named or locked, by the permanent part of the permanent id.</summary>
    public RecordTable<Guid, ItemRecord> Items { get; }

    /// <summary>What was equal on both sides when it was last synced, by path.</summary>
    public RecordTable<string, SyncedRecord> Synced { get; }

    /// <summary>The reasons of the last failures.</summary>
    public FailureTable Failures { get; }

    public bool IsChanged => Items.IsChanged || Synced.IsChanged || Failures.IsChanged;

    /// <summary>A copy that can be changed while this one is read.</summary>
    public DriveIndex Clone() => new(Items.Clone(), Synced.Clone(), Failures.Clone());

    /// <summary>Marks everything as saved.</summary>
    public void AcceptChanges()
    {
        Items.AcceptChanges();
        Synced.AcceptChanges();
        Failures.AcceptChanges();
    }

    /// <summary>Records the new paths of items and of everything in them; all at once, so that items can swap places.</summary>
    public void Move(params (string From, string To)[] moves)
    {
        MoveIn(Items, moves, (record, path) => record with { Path = path });
        MoveIn(Synced, moves, (record, path) => record with { Path = path });
        foreach (var (from, _) in moves)
            Failures.RemoveWithin(from);
    }

    /// <summary>Records that an item, with everything in it, no longer exists.</summary>
    public void Remove(string path)
    {
        Within(Items, path).ForEach(Items.Remove);
        Within(Synced, path).ForEach(Synced.Remove);
        Failures.RemoveWithin(path);
    }

    private static void MoveIn<TKey, TRecord>(
        RecordTable<TKey, TRecord> table, (string From, string To)[] moves, Func<TRecord, string, TRecord> at)
        where TKey : notnull where TRecord : class, ITrackedRecord<TKey>
    {
        var moved = moves.SelectMany(
            move => Within(table, move.From), (move, record) => (Old: record, New: at(record, move.To + record.Path[move.From.Length..]))).ToList();
        moved.ForEach(record => table.Remove(record.Old));
        moved.ForEach(record => table.Put(record.New));
    }

    private static List<TRecord> Within<TKey, TRecord>(RecordTable<TKey, TRecord> table, string path)
        where TKey : notnull where TRecord : class, ITrackedRecord<TKey>
    {
        var top = table.ByPath(path);
        var found = top is { IsFolder: false } ? [] : table.Below(path);
        if (top is not null)
            found.Add(top);
        return found;
    }
}
