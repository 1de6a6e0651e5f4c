namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The two ways to write a full path: back-slashes, as items carry it, and the platform's own, as files are opened.
/// </summary>
internal static class PathForm
{
    public static string ToBackslashes(string path) => path.Replace('/', '\\');

    public static string ToPlatform(string path) =>
        Path.DirectorySeparatorChar == '\\' ? path.Replace('/', '\\') : path.Replace('\\', '/');

    /// <summary>
    /// A normalised full path in the form that the platform takes literally, without reserving names for devices.
    /// </summary>
    public static string ToLiteral(string path) =>
        Path.DirectorySeparatorChar != '\\' || path.StartsWith(@"\\?\", StringComparison.Ordinal) ? path
        : path.StartsWith(@"\\", StringComparison.Ordinal) ? @"\\?\UNC" + path[1..]
        : @"\\?\" + path;

    /// <summary>
    /// The platform's normalised form of a full path with either slash, or null if the string names no place on this machine.
    /// </summary>
    public static string? TryNormalise(string? path)
    {
        if (string.IsNullOrEmpty(path) || path.Contains('\0') || !NameRules.IsWellFormed(path))
            return null;
        var platform = ToPlatform(path);
        if (!Path.IsPathFullyQualified(platform))
            return null;
        try
        {
            return Path.TrimEndingDirectorySeparator(Path.GetFullPath(platform));
        }
        catch (Exception e) when (e is ArgumentException or IOException or NotSupportedException)
        {
            return null;
        }
    }
}
