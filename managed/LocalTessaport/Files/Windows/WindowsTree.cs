using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Deletes trees of any depth. What is in a folder is first moved up to the folder that is emptied, so that no path grows,
/// nothing recurses and no link leads out.
/// </summary>
internal static class WindowsTree
{
    /// <summary>Deletes everything in a folder; false if something could not be deleted.</summary>
    public static bool Empty(WindowsFolder top)
    {
        // Each round brings the tree up by one level.
        while (true)
        {
            var done = 0;
            var items = top.List(filter: null);
            foreach (var (name, entry) in items)
                Remove(top, name, entry, ref done);
            if (items.Count == 0)
                return true;
            if (done == 0)
                return false;
        }
    }

    private static void Remove(WindowsFolder top, string name, FileEntry entry, ref int done)
    {
        if (entry.IsFolder)
            MoveContentsUp(top, name, ref done);
        top.TryDelete(name);
        if (top.Find(name) is null)
            ++done;
    }

    private static void MoveContentsUp(WindowsFolder top, string name, ref int done)
    {
        using var folder = (WindowsFolder?)top.TryOpen(name);
        if (folder is null)
            return;
        foreach (var (inner, entry) in folder.List(filter: null))
        {
            if (entry.IsFolder ? TryMove(folder, inner, top) : TryDelete(folder, inner))
                ++done;
        }
    }

    private static bool TryDelete(WindowsFolder folder, string name)
    {
        folder.TryDelete(name);
        return folder.Find(name) is null;
    }

    private static bool TryMove(WindowsFolder folder, string name, WindowsFolder top)
    {
        try
        {
            folder.Move(name, top, Staging.NewName());
            return true;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return false;
        }
    }
}
