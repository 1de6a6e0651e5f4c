namespace Quorvex.Tessaport.API.Model;

/// <summary>Items that a sync cannot make equal: a file and a folder of one name, a link in the way, a reserved name.</summary>
internal static class Obstacles
{
    public static List<(Side Side, string Path)> Find(World world)
    {
        var here = world.Workspace.Walk().ToDictionary(entry => entry.Path, entry => entry.Kind);
        var there = world.Server.Walk().ToDictionary(entry => entry.Path, entry => entry.Kind);
        var found = new List<(Side, string)>();
        foreach (var path in here.Keys.Union(there.Keys).Where(path => !world.Patterns.LeaveOut(world, path)))
        {
            var (local, remote) = (here.GetValueOrDefault(path), there.GetValueOrDefault(path));
            if (local != Kind.None && remote != Kind.None && local != remote)
                found.Add(local == Kind.Folder ? (world.Server, path) : (world.Workspace, path));
            if (path.EndsWith("con.txt", StringComparison.Ordinal))
                found.Add((local != Kind.None ? world.Workspace : world.Server, path));
        }
        return found.Distinct().ToList();
    }
}
