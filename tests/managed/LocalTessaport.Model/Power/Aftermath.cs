using System.Text;

namespace Quorvex.Tessaport.API.Model;

/// <summary>What must hold once the service has synced a home whose last command was interrupted.</summary>
internal static class Aftermath
{
    private static readonly string[] Sides = ["workspace/", "server/", "drives/second/workspace/", "drives/second/server/"];

    /// <summary>Whether a path of a home is that of a user's file.</summary>
    public static bool IsOfUsers(string path) =>
        Sides.Any(side => path.StartsWith(side, StringComparison.Ordinal)) && !path.Contains("/.tessaport/", StringComparison.Ordinal);

    public static int? VersionIn(byte[] content) => Version.TryParse(Encoding.UTF8.GetString(content), out var number) ? number : null;

    /// <summary>Syncs the drives of a home, and looks at what is in them then.</summary>
    /// <param name="home">The home.</param>
    /// <param name="owed">The versions that must be there.</param>
    /// <param name="remains">What may be there besides versions, in base 64.</param>
    public static void Require(string home, IReadOnlySet<int> owed, IReadOnlySet<string> remains)
    {
        var drives = TestHome.Sync(home);
        var found = FilesOfUsers(home);
        RequireComplete(found, remains);
        var missing = owed.Except(found.Values.Select(VersionIn).OfType<int>()).ToList();
        Check(missing.Count == 0, () => $"Version {missing[0]} is lost.");
        foreach (var (workspace, server) in drives)
            Check(FilesOf(workspace).SequenceEqual(FilesOf(server)), () => $"'{workspace}' and '{server}' differ after a sync.");
        var left = Directory.EnumerateFileSystemEntries(home, "*", SearchOption.AllDirectories)
            .FirstOrDefault(path => path.EndsWith(".tmp", StringComparison.Ordinal) || path.EndsWith("/.tessaport", StringComparison.Ordinal));
        Check(left is null, () => $"'{left}' is left behind.");
    }

    /// <summary>Requires that each file of a user is a version.</summary>
    public static void RequireComplete(Dictionary<string, byte[]> files, IReadOnlySet<string> remains)
    {
        foreach (var (path, content) in files)
            Check(VersionIn(content) is not null || remains.Contains(Convert.ToBase64String(content)), () => $"'{path}' is a part of a version.");
    }

    public static Dictionary<string, byte[]> FilesOfUsers(string home) => Directory
        .EnumerateFiles(home, "*", SearchOption.AllDirectories)
        .Where(path => IsOfUsers(Path.GetRelativePath(home, path)))
        .ToDictionary(path => path, File.ReadAllBytes);

    private static List<(string, string)> FilesOf(string side) => Directory
        .EnumerateFiles(side, "*", SearchOption.AllDirectories)
        .Select(path => (Path.GetRelativePath(side, path), Convert.ToBase64String(File.ReadAllBytes(path))))
        .Order()
        .ToList();

    private static void Check(bool holds, Func<string> what)
    {
        if (!holds)
            throw new BrokenPromiseException(what());
    }
}
