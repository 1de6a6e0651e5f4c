using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>One of the two folders of a drive.</summary>
internal sealed class DriveSide
{
    public DriveSide(string root)
    {
        Root = root;
        // The root of a volume ends with its slash already.
        Prefix = Path.EndsInDirectorySeparator(root) ? root : root + Path.DirectorySeparatorChar;
    }

    /// <summary>In the platform's form.</summary>
    public string Root { get; }

    /// <summary>What the path of everything in it begins with.</summary>
    public string Prefix { get; }

    public string PathOf(string relative) => relative.Length == 0 ? Root : Prefix + PathForm.ToPlatform(relative);

    public FileEntry? Find(string relative) => FileProbe.Find(PathOf(relative));

    /// <summary>The path below the root of what a normalised full path names, or null when that lies elsewhere.</summary>
    public string? TryGetRelative(string fullPath)
    {
        if (fullPath.StartsWith(Prefix, RelativePath.Comparison))
            return RelativePath.TryParse(fullPath[Prefix.Length..]);
        return fullPath.Equals(Root, RelativePath.Comparison) ? RelativePath.Root : null;
    }
}
