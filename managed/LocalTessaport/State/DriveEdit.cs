using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>One drive while a request changes it: the files, and a copy of its records that is saved at the end.</summary>
internal sealed class DriveEdit : IDisposable
{
    public DriveEdit(LocalDrive drive, DriveIndex index)
    {
        Drive = drive.Opened();
        Index = index;
        Tracker = new ItemTracker(Drive, index.Items);
    }

    public LocalDrive Drive { get; }
    public DriveIndex Index { get; }
    public ItemTracker Tracker { get; }

    public void Dispose() => Drive.Dispose();

    public ItemView At(string path) => ItemView.At(Drive, path);

    /// <summary>The record of an item that exists, made when there is none, brought up to what the view shows.</summary>
    public ItemRecord Record(ItemView view)
    {
        var record = (Tracker.RecordOf(view) ?? ItemRecord.For(view)).SeenIn(view);
        Index.Items.Put(record);
        return record;
    }

    /// <summary>Notes that both sides of an item are equal now; the hash is given when it is known.</summary>
    public void RecordSynced(string path, string? hash)
    {
        var view = At(path);
        if (view is not { Workspace: { } local, Server: { } remote })
            return;
        Index.Synced.Put(SyncedRecord.For(path, local, remote));
        var record = Record(view);
        if (hash is not null)
            Index.Items.Put(record with { Content = new ContentMark(local.Size, hash) });
    }
}
