namespace Quorvex.Tessaport.API.Local;

/// <summary>Walks everything on one side of a drive.</summary>
internal static class DriveScan
{
    /// <summary>
    /// Every file and folder below a folder, folders before their contents. Folders without read permission are left out.
    /// </summary>
    public static IEnumerable<(string Path, FileEntry Entry)> Walk(DriveSide side, string top = RelativePath.Root)
    {
        var folders = new Stack<string>();
        folders.Push(top);
        while (folders.TryPop(out var folder))
        {
            foreach (var (name, entry) in ReadIfAllowed(side, folder))
            {
                var path = RelativePath.Join(folder, name);
                if (entry.IsFolder)
                    folders.Push(path);
                yield return (path, entry);
            }
        }
    }

    /// <summary>What is directly in a folder; empty without read permission.</summary>
    public static List<NamedEntry> ReadIfAllowed(DriveSide side, string folder)
    {
        try
        {
            return side.Read(folder);
        }
        catch (UnauthorizedAccessException)
        {
            return [];
        }
    }
}
