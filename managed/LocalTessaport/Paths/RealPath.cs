using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The one spelling of a path that holds no links; hosts compare the paths of items with paths in that form.</summary>
internal static class RealPath
{
    private const int MostLinks = 40;

    /// <summary>Follows every link in a normalised full path as far as it exists; the rest stays as it is.</summary>
    public static string Of(string path) => Resolve(path, MostLinks);

    private static string Resolve(string path, int linksLeft)
    {
        var resolved = Path.GetPathRoot(path)!;
        foreach (var part in path[resolved.Length..].Split(Path.DirectorySeparatorChar, StringSplitOptions.RemoveEmptyEntries))
        {
            resolved = Path.Combine(resolved, part);
            if (linksLeft > 0 && TargetOf(resolved) is { } target)
                resolved = Resolve(target, --linksLeft);
        }
        return resolved;
    }

    private static string? TargetOf(string path)
    {
        try
        {
            return Directory.ResolveLinkTarget(path, returnFinalTarget: false) is { } target
                ? PathForm.TryNormalise(target.FullName)
                : null;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return null;
        }
    }
}
