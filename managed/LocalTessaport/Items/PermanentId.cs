namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The string that names an item permanently. It holds the drive as well, so that the drive is known without a search.
/// </summary>
internal readonly record struct PermanentId(Guid Drive, Guid Token)
{
    private const string Prefix = "tp.";
    private const int Digits = 32;

    /// <summary>The root exists as long as its drive.</summary>
    public static PermanentId OfRoot(Guid drive) => new(drive, drive);

    public bool IsRoot => Token == Drive;

    public override string ToString() => $"{Prefix}{Drive:N}.{Token:N}";

    public static PermanentId? TryParse(string? text)
    {
        if (text is null || text.Length != Prefix.Length + Digits + 1 + Digits
            || !text.StartsWith(Prefix, StringComparison.Ordinal) || text[Prefix.Length + Digits] != '.')
            return null;
        return Guid.TryParseExact(text.AsSpan(Prefix.Length, Digits), "N", out var drive)
            && Guid.TryParseExact(text.AsSpan(Prefix.Length + Digits + 1), "N", out var token)
            ? new PermanentId(drive, token)
            : null;
    }
}
