namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Work that is due before a drive is used: removing leftovers of a killed process, taking stock of a new drive.
/// </summary>
internal static class Upkeep
{
    /// <summary>
    /// Does the work that is due, if it can. If another process holds the lock, that process does it; reading works without
    /// it.
    /// </summary>
    public static void RunIfDue(RequestScope request)
    {
        try
        {
            var due = request.Drives.Drives.Where(drive => IsDue(request.Home, drive)).ToList();
            if (due.Count == 0 && !AtomicFile.HasLeavings(request.Home))
                return;
            using var held = HomeLock.TryAcquire(request.Home);
            if (held is null)
                return;
            AtomicFile.RemoveLeavings(request.Home);
            due.ForEach(drive => Run(request.Home, drive));
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    /// <summary>Does the work for one drive; the caller holds the lock.</summary>
    public static void Run(HomeFolder home, LocalDrive drive)
    {
        drive.MakeFolders();
        drive.Workspace.ClearStaging();
        drive.Server.ClearStaging();
        if (!IndexStore.Exists(home, drive.Id))
            IndexStore.Save(home, drive.Id, Inventory.Take(drive));
    }

    private static bool IsDue(HomeFolder home, LocalDrive drive) =>
        !IndexStore.Exists(home, drive.Id)
        || drive.Workspace.HasStaging()
        || drive.Server.HasStaging();
}
