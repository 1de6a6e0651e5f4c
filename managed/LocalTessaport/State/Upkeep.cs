using System;
using System.IO;
using System.Linq;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What is due before a drive is used: removing what a killed process left, taking stock of a new drive.</summary>
internal static class Upkeep
{
    /// <summary>Does it when nothing hinders. Who holds the lock sees to it otherwise, and reading works without.</summary>
    public static void RunIfDue(Session session)
    {
        try
        {
            var due = session.Drives.Drives.Where(drive => IsDue(session.Home, drive)).ToList();
            if (due.Count == 0 && !AtomicFile.HasLeavings(session.Home))
                return;
            using var held = HomeLock.TryAcquire(session.Home);
            if (held is null)
                return;
            AtomicFile.RemoveLeavings(session.Home);
            due.ForEach(drive => Run(session.Home, drive));
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    /// <summary>Does it; the caller holds the lock.</summary>
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
