using System.Buffers;
using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The names that items can have. A drive is shared between platforms, so the strictest rules apply to what is added.
/// </summary>
internal static class NameRules
{
    private const int LongestName = 255;

    private static readonly SearchValues<char> Forbidden = SearchValues.Create("<>:\"/\\|?*");

    private static readonly HashSet<string> DeviceNames = new(StringComparer.OrdinalIgnoreCase)
    {
        "CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$",
        "COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8", "COM9", "COM¹", "COM²", "COM³",
        "LPT1", "LPT2", "LPT3", "LPT4", "LPT5", "LPT6", "LPT7", "LPT8", "LPT9", "LPT¹", "LPT²", "LPT³",
    };

    /// <summary>Whether the name of something in a folder can be reported and found again by the reported name.</summary>
    public static bool CanBeListed(ReadOnlySpan<char> name) =>
        !name.ContainsAny('\\', '\0', '\uFFFD')
        && !name.Equals(Staging.FolderName, RelativePath.Comparison)
        && IsWellFormed(name);

    /// <summary>Whether a name may be given to an item on every platform that the drive could be mounted on.</summary>
    public static bool CanBeAdded(string name) =>
        name.Length is > 0 and <= LongestName
        && Encoding.UTF8.GetByteCount(name) <= LongestName
        && name[^1] is not ('.' or ' ')
        && !name.AsSpan().ContainsAny(Forbidden)
        && !ContainsControlCharacter(name)
        && !DeviceNames.Contains(WithoutExtensions(name))
        && CanBeListed(name);

    /// <summary>
    /// A name with a note before its extension, shortened by complete characters to what every platform accepts.
    /// </summary>
    public static string WithNote(string name, string note)
    {
        var extension = Path.GetExtension(name);
        var stem = name[..^extension.Length];
        while (stem.Length > 1 && Encoding.UTF8.GetByteCount(stem + note + extension) > LongestName)
            stem = stem[..^(char.IsLowSurrogate(stem[^1]) ? 2 : 1)];
        return stem + note + extension;
    }

    /// <summary>Throws when a name may not be given to an item.</summary>
    public static void Require(string name)
    {
        if (!CanBeAdded(name))
            throw new IOException(ReasonAgainst(name));
    }

    /// <summary>What users read about a name that may not be given to an item.</summary>
    public static string ReasonAgainst(string name) => $"'{name}' is not a name that every platform accepts; rename it.";

    /// <summary>Whether every surrogate has its partner; other strings are changed when they become a file name.</summary>
    public static bool IsWellFormed(ReadOnlySpan<char> text)
    {
        while (text.IndexOfAnyInRange('\uD800', '\uDFFF') is var at and >= 0)
        {
            if (at + 1 == text.Length || !char.IsSurrogatePair(text[at], text[at + 1]))
                return false;
            text = text[(at + 2)..];
        }
        return true;
    }

    private static bool ContainsControlCharacter(string name)
    {
        foreach (var c in name)
        {
            if (c < ' ')
                return true;
        }
        return false;
    }

    private static string WithoutExtensions(string name) =>
        (name.IndexOf('.') is var dot and >= 0 ? name[..dot] : name).TrimEnd(' ');
}
