namespace Quorvex.Tessaport.API.Local;

/// <summary>What the patterns of a drive leave out. It is neither copied nor replaced nor deleted, on either side.</summary>
internal static class LeftOut
{
    /// <summary>The pattern that leaves out an item; null if none does. A name that is a folder on one side counts as a folder.</summary>
    public static string? PatternFor(ItemView view) => view.Drive.Ignored is not { } rules ? null
        : rules.PatternFor(view.Path, view.IsFolder || view.Server is { IsFolder: true });

    /// <summary>What users read about an item that is left out.</summary>
    public static string ReasonFor(string pattern) => $"It is left out by the pattern '{pattern}' of the drive.";

    /// <exception cref="IOException">The item is left out.</exception>
    public static void RequireNot(ItemView view)
    {
        if (PatternFor(view) is { } pattern)
            throw new IOException(
                $"'{view.Drive.WorkspacePathOf(view.Path)}' is left out by the pattern '{pattern}' of the drive; remove the pattern first.");
    }

    /// <exception cref="IOException">Something in the folder is left out on either side.</exception>
    public static void RequireNothingIn(ItemView folder)
    {
        if (folder.Drive.Ignored is not { } rules)
            return;
        foreach (var side in SideNames.Both)
        {
            if (folder.On(side) is not { IsFolder: true })
                continue;
            foreach (var (path, entry) in DriveScan.Walk(folder.Drive.Side(side), folder.Path))
            {
                if (rules.PatternInFolder(path, entry.IsFolder) is { } pattern)
                    throw new IOException(
                        $"'{folder.Drive.Side(side).PathOf(path)}' is left out by the pattern '{pattern}' of the drive, so it stays, and "
                        + "with it the folder. Delete it by hand or remove the pattern, then try again.");
            }
        }
    }
}
