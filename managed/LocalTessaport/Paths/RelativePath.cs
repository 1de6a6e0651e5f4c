namespace Quorvex.Tessaport.API.Local;

/// <summary>Paths below a drive's root: back-slashes, no slash at either end, empty for the root itself.</summary>
internal static class RelativePath
{
    public const string Root = "";

    public static readonly StringComparer Comparer = OperatingSystem.IsWindows() || OperatingSystem.IsMacOS()
        ? StringComparer.OrdinalIgnoreCase
        : StringComparer.Ordinal;

    public static readonly StringComparison Comparison = ReferenceEquals(Comparer, StringComparer.OrdinalIgnoreCase)
        ? StringComparison.OrdinalIgnoreCase
        : StringComparison.Ordinal;

    public static string Join(string folder, string name) => folder.Length == 0 ? name : folder + '\\' + name;

    public static string NameOf(string path) => path[(path.LastIndexOf('\\') + 1)..];

    public static string FolderOf(string path) => path.LastIndexOf('\\') is var at and >= 0 ? path[..at] : Root;

    public static bool IsInside(string path, string folder) =>
        path.Length > folder.Length
        && (folder.Length == 0 || (path[folder.Length] == '\\' && path.StartsWith(folder, Comparison)));

    /// <summary>Brings a path with either slash into this form, or returns null if a part of it cannot name an item.</summary>
    public static string? TryParse(string? text)
    {
        if (text is null)
            return null;
        var parts = text.Split(['\\', '/'], StringSplitOptions.RemoveEmptyEntries);
        foreach (var part in parts)
        {
            if (part is "." or ".." || !NameRules.CanBeListed(part))
                return null;
        }
        return string.Join('\\', parts);
    }
}
