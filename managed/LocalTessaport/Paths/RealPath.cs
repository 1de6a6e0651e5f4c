namespace Quorvex.Tessaport.API.Local;

/// <summary>The one spelling of a path that holds no links; hosts compare the paths of items with paths in that form.</summary>
internal sealed class RealPath
{
    private const int MostLinks = 40;

    private readonly Dictionary<string, string> _known = new(StringComparer.Ordinal);

    /// <summary>Follows every link in a normalised full path as far as it exists; the rest stays as it is.</summary>
    public static string Of(string path) => new RealPath().Resolve(path);

    /// <summary>The same for many paths at one moment; each folder is examined once.</summary>
    public string Resolve(string path) => Resolve(path, MostLinks);

    private string Resolve(string path, int linksLeft)
    {
        var resolved = Path.GetPathRoot(path)!;
        foreach (var part in path[resolved.Length..].Split(Path.DirectorySeparatorChar, StringSplitOptions.RemoveEmptyEntries))
        {
            var next = Path.Combine(resolved, part);
            if (!_known.TryGetValue(next, out resolved!))
                _known[next] = resolved = FollowLink(next, linksLeft);
        }
        return resolved;
    }

    private string FollowLink(string path, int linksLeft) =>
        linksLeft > 0 && TargetOf(path) is { } target ? Resolve(target, linksLeft - 1) : path;

    private static string? TargetOf(string path)
    {
        try
        {
            // Unlike ResolveLinkTarget it throws nothing for a path where nothing is, and the first exception of a process takes more than 1 ms.
            return new FileInfo(path).LinkTarget is { } target
                ? PathForm.TryNormalise(Path.Combine(Path.GetDirectoryName(path)!, target))
                : null;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return null;
        }
    }
}
