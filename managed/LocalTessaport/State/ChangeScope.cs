namespace Quorvex.Tessaport.API.Local;

/// <summary>The part of a request that makes changes. It excludes other processes, and saves the records at its end.</summary>
internal sealed class ChangeScope : IDisposable
{
    private readonly HomeFolder _home;
    private readonly HomeLock _held;
    private readonly Dictionary<Guid, DriveEdit> _edits = [];

    public ChangeScope(HomeFolder home)
    {
        _home = home;
        Step.Reached("Change.Begin", home.Root);
        _held = HomeLock.Acquire(home);
    }

    public DriveEdit Edit(LocalDrive seen)
    {
        if (_edits.TryGetValue(seen.Id, out var known))
            return known;
        // The drive may have been changed while the request waited for the lock.
        var drive = DriveFile.Load(_home).Find(seen.Id)
            ?? throw new IOException($"The drive '{seen.Name}' was removed; list the drives again.");
        Upkeep.Run(_home, drive);
        return _edits[drive.Id] = new DriveEdit(drive, IndexStore.Load(_home, drive.Id).Clone());
    }

    public void Save()
    {
        foreach (var edit in _edits.Values)
            DriveFlush.Run(edit.Drive, edit.Index.Synced.Changed);
        // Deleted items are removed first, because users delete files when a disk is full.
        ClearStaging();
        foreach (var edit in _edits.Values.Where(edit => edit.Index.IsChanged))
            IndexStore.Save(_home, edit.Drive.Id, edit.Index);
    }

    public void Dispose()
    {
        ClearStaging();
        foreach (var edit in _edits.Values)
            edit.Dispose();
        _held.Dispose();
    }

    private void ClearStaging()
    {
        foreach (var edit in _edits.Values)
        {
            edit.Drive.Workspace.ClearStaging();
            edit.Drive.Server.ClearStaging();
        }
    }
}
