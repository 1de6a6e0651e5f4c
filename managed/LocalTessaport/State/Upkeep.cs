using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What is due before a drive is used: removing what a killed process left, taking stock of a new drive.</summary>
internal static class Upkeep
{
    /// <summary>Does it when nothing hinders. Who holds the lock sees to it otherwise, and reading works without.</summary>
    public static void RunIfDue(Session session)
    {
        try
        {
            foreach (var drive in session.Drives.Drives)
            {
                if (!IsDue(session.Home, drive))
                    continue;
                using var held = HomeLock.TryAcquire(session.Home);
                if (held is not null)
                    Run(session.Home, drive);
            }
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    /// <summary>Does it; the caller holds the lock.</summary>
    public static void Run(HomeFolder home, LocalDrive drive)
    {
        drive.MakeFolders();
        Staging.Clear(drive.Workspace.Root);
        Staging.Clear(drive.Server.Root);
        if (!IndexStore.Exists(home, drive.Id))
            IndexStore.Save(home, drive.Id, Inventory.Take(drive));
    }

    private static bool IsDue(HomeFolder home, LocalDrive drive) =>
        !IndexStore.Exists(home, drive.Id)
        || Staging.Exists(drive.Workspace.Root)
        || Staging.Exists(drive.Server.Root);
}
