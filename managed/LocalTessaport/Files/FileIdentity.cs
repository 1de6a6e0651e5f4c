using System.Globalization;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The file system's number of a file, which a rename leaves alone, and the moment that tells the file from a later one that
/// was given the same number.
/// </summary>
internal readonly record struct FileIdentity(ulong Number, long Moment)
{
    public static FileIdentity None => default;

    public bool IsKnown => Number != 0;

    /// <summary>The same known file: two unknown ones are not the same.</summary>
    public bool Matches(FileIdentity other) => IsKnown && this == other;

    public override string ToString() => string.Create(CultureInfo.InvariantCulture, $"{Number:x}:{Moment:x}");

    public static FileIdentity Parse(string text)
    {
        var colon = text.IndexOf(':');
        return new FileIdentity(
            ulong.Parse(text.AsSpan(0, colon), NumberStyles.HexNumber, CultureInfo.InvariantCulture),
            long.Parse(text.AsSpan(colon + 1), NumberStyles.HexNumber, CultureInfo.InvariantCulture));
    }
}
