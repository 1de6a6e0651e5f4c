namespace Quorvex.Tessaport.API.Local;

/// <summary>The items directly in a folder: both sides together, by name.</summary>
internal static class FolderListing
{
    private static readonly Comparison<ItemView> ByName = (a, b) =>
    {
        var ignoringCase = string.Compare(a.Path, b.Path, StringComparison.OrdinalIgnoreCase);
        return ignoringCase != 0 ? ignoringCase : string.CompareOrdinal(a.Path, b.Path);
    };

    public static List<ItemView> Read(LocalDrive drive, string folder)
    {
        var local = drive.Workspace.Read(folder);
        var remote = drive.Server.Read(folder);
        // Positions and not entries: the runtime has no code in advance for a dictionary of this assembly's structs.
        var unmatched = new Dictionary<string, int>(remote.Count, RelativePath.Comparer);
        for (var i = 0; i < remote.Count; ++i)
            unmatched[remote[i].Name] = i;
        var views = new List<ItemView>(Math.Max(local.Count, remote.Count));
        foreach (var (name, entry) in local)
        {
            FileEntry? counterpart = unmatched.Remove(name, out var position) ? remote[position].Entry : null;
            views.Add(new ItemView(drive, RelativePath.Join(folder, name), entry, counterpart));
        }
        foreach (var position in unmatched.Values)
            views.Add(new ItemView(drive, RelativePath.Join(folder, remote[position].Name), null, remote[position].Entry));
        views.Sort(ByName);
        return views;
    }

    /// <summary>Throws unless the view is of a folder whose contents can be listed.</summary>
    public static void RequireFolder(ItemView view)
    {
        if (!view.Exists && !view.IsRoot)
            throw new DirectoryNotFoundException(
                $"The folder '{view.Drive.WorkspacePathOf(view.Path)}' no longer exists; list its parent again.");
        if (!view.IsFolder)
            throw new ArgumentException($"'{view.Drive.WorkspacePathOf(view.Path)}' is a file; ask about a folder.");
    }
}
