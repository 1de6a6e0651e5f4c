using System;
using System.Collections.Generic;

namespace Quorvex.Tessaport.API.Local;

/// <summary>All that is remembered of one drive.</summary>
internal sealed class DriveIndex
{
    public DriveIndex()
        : this(new(EqualityComparer<Guid>.Default), new(RelativePath.Comparer))
    {
    }

    private DriveIndex(RecordTable<Guid, ItemRecord> items, RecordTable<string, SyncedRecord> synced)
    {
        Items = items;
        Synced = synced;
    }

    /// <summary>The items that were named or locked, by the lasting part of the permanent id.</summary>
    public RecordTable<Guid, ItemRecord> Items { get; }

    /// <summary>What was equal on both sides when it was last synced, by path.</summary>
    public RecordTable<string, SyncedRecord> Synced { get; }

    public bool IsChanged => Items.IsChanged || Synced.IsChanged;

    /// <summary>A copy to be changed while this one is read.</summary>
    public DriveIndex Clone() => new(Items.Clone(), Synced.Clone());

    /// <summary>Notes that an item, with everything in it, has another path.</summary>
    public void Move(string from, string to)
    {
        foreach (var record in Items.Beneath(from))
            Items.Put(record with { Path = to + record.Path[from.Length..] });
        if (Items.ByPath(from) is { } item)
            Items.Put(item with { Path = to });

        var synced = Synced.Beneath(from);
        if (Synced.ByPath(from) is { } top)
            synced.Add(top);
        synced.ForEach(Synced.Remove);
        synced.ForEach(record => Synced.Put(record with { Path = to + record.Path[from.Length..] }));
    }

    /// <summary>Notes that an item, with everything in it, is gone.</summary>
    public void Remove(string path)
    {
        Items.Beneath(path).ForEach(Items.Remove);
        Synced.Beneath(path).ForEach(Synced.Remove);
        if (Items.ByPath(path) is { } item)
            Items.Remove(item);
        if (Synced.ByPath(path) is { } synced)
            Synced.Remove(synced);
    }
}
