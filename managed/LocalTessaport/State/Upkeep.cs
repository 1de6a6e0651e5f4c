using System.Collections.Concurrent;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Work that is due before a drive is used: removing leftovers of a killed process, taking stock of a new drive.
/// </summary>
internal static class Upkeep
{
    // The home's own failures have no drive.
    private sealed record Place(string Home, Guid Drive);

    private static readonly ConcurrentDictionary<Place, string> Failures = new();

    /// <summary>
    /// Does the work that is due, if it can. If another process holds the lock, that process does it; reading works without
    /// it. A failure does not concern the request; users read its reason as a property of the drive.
    /// </summary>
    public static void RunIfDue(RequestScope request)
    {
        var home = request.Home;
        var due = new List<LocalDrive>();
        foreach (var drive in request.Drives.Drives)
        {
            if (Note(home, drive.Id, () => IsDue(home, drive)))
                due.Add(drive);
        }
        Note(home, Guid.Empty, () =>
        {
            if (due.Count == 0 && !AtomicFile.HasLeavings(home))
                return false;
            using var held = HomeLock.TryAcquire(home);
            if (held is null)
                return false;
            due.ForEach(drive => Note(home, drive.Id, () => RunAndReport(home, drive)));
            AtomicFile.RemoveLeavings(home);
            return true;
        });
    }

    /// <summary>Why work that was due for a drive could not be done before the last request; null if it was done.</summary>
    public static string? FailureOf(HomeFolder home, Guid drive)
    {
        var ofDrive = Failures.GetValueOrDefault(new(home.Root, drive));
        var ofHome = Failures.GetValueOrDefault(new(home.Root, Guid.Empty));
        return ofDrive is not null && ofHome is not null ? $"{ofDrive} {ofHome}" : ofDrive ?? ofHome;
    }

    private static void RunAndReport(HomeFolder home, LocalDrive drive)
    {
        if (Run(home, drive) is { } foreign)
            throw new IOException(foreign);
    }

    /// <summary>Does the work for one drive; the caller holds the lock.</summary>
    /// <returns>Why a staging folder is left alone, if it is not the service's own; otherwise null.</returns>
    public static string? Run(HomeFolder home, LocalDrive drive)
    {
        var isNew = !IndexStore.Exists(home, drive.Id);
        if (isNew)
            drive.MakeFolders();
        else
            drive.RequireFolders();
        var foreign = drive.Workspace.ClearStaging() ?? drive.Server.ClearStaging();
        if (isNew)
            SaveFirst(home, drive, Inventory.Take(drive));
        return foreign;
    }

    private static void SaveFirst(HomeFolder home, LocalDrive drive, DriveIndex index)
    {
        DriveFlush.Run(drive, index.Synced.Changed);
        IndexStore.Save(home, drive.Id, index);
    }

    private static void Note(HomeFolder home, Guid drive, Action work) =>
        Note(home, drive, () =>
        {
            work();
            return true;
        });

    /// <summary>Keeps the reason if the work fails, and forgets the previous one if it does not.</summary>
    private static bool Note(HomeFolder home, Guid drive, Func<bool> work)
    {
        try
        {
            var result = work();
            Failures.TryRemove(new(home.Root, drive), out _);
            return result;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            Failures[new(home.Root, drive)] = e.Message;
            return false;
        }
    }

    private static bool IsDue(HomeFolder home, LocalDrive drive) =>
        !IndexStore.Exists(home, drive.Id)
        || (drive.Workspace.HasStaging() ?? true)
        || (drive.Server.HasStaging() ?? !drive.Offline);
}
