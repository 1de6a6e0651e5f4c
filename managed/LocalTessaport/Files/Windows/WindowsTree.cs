namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Deletes trees of any depth. The contents of a folder are first moved up to the folder that is emptied, so that paths stay
/// short, nothing recurses and no link is followed.
/// </summary>
internal static class WindowsTree
{
    /// <summary>Deletes everything in a folder; false if something could not be deleted.</summary>
    public static bool Empty(WindowsFolder top)
    {
        // Each round moves the tree up by one level. A file that another program holds open is still listed when it is deleted.
        var earlier = new HashSet<string>();
        while (true)
        {
            var items = top.List();
            if (items.Count == 0)
                return true;
            if (earlier.SetEquals(items.Select(item => item.Name)))
                return false;
            earlier = items.Select(item => item.Name).ToHashSet();
            foreach (var (name, entry) in items)
                Remove(top, name, entry);
        }
    }

    private static void Remove(WindowsFolder top, string name, FileEntry entry)
    {
        if (entry.IsFolder)
            MoveContentsUp(top, name);
        top.TryDelete(name);
    }

    private static void MoveContentsUp(WindowsFolder top, string name)
    {
        using var folder = (WindowsFolder?)top.TryOpen(name);
        if (folder is null)
            return;
        foreach (var (inner, entry) in folder.List())
        {
            if (entry.IsFolder)
                TryMove(folder, inner, top);
            else
                folder.TryDelete(inner);
        }
    }

    private static void TryMove(WindowsFolder folder, string name, WindowsFolder top)
    {
        try
        {
            folder.Move(name, top, Staging.NewName());
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }
}
