using System.Buffers.Binary;
using System.Globalization;
using System.Security.Cryptography;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The name in the staging folder under which something can come there that was not checked yet. It says what is expected of that, since a
/// power failure can take the content of a file that would say it, but not the name of an item from the item.
/// </summary>
internal readonly record struct UncheckedName
{
    private const char Separator = '-';
    private const int MarkDigits = 16;

    private readonly ulong _expected;
    private readonly ulong _prepared;

    private UncheckedName(string text, ulong expected, ulong prepared)
    {
        Text = text;
        _expected = expected;
        _prepared = prepared;
    }

    public string Text { get; }

    /// <summary>A new name.</summary>
    /// <param name="expected">What is expected to come.</param>
    /// <param name="prepared">What has the name until then; unknown if nothing has.</param>
    public static UncheckedName For(FileEntry expected, FileIdentity prepared)
    {
        var (ofExpected, ofPrepared) = (MarkOf(expected), MarkOf(prepared));
        return new($"{Staging.NewName()}{Separator}{ofExpected:x16}{Separator}{ofPrepared:x16}", ofExpected, ofPrepared);
    }

    /// <summary>Null for any other name.</summary>
    public static UncheckedName? TryParse(string name) =>
        name.Split(Separator) is [_, { Length: MarkDigits } expected, { Length: MarkDigits } prepared]
        && TryParse(expected, out var ofExpected) && TryParse(prepared, out var ofPrepared)
            ? new(name, ofExpected, ofPrepared)
            : null;

    /// <summary>Whether something is what was expected to come.</summary>
    public bool IsExpected(FileEntry found) => MarkOf(found) == _expected;

    /// <summary>Whether something is what had the name before anything came.</summary>
    public bool IsPrepared(FileEntry found) => found.Identity.IsKnown && MarkOf(found.Identity) == _prepared;

    // The same properties as those that Removal.IsExpected compares after a rename.
    private static ulong MarkOf(FileEntry entry) => entry.IsFolder
        ? MarkOf([(long)entry.Kind, (long)entry.Identity.Number])
        : MarkOf(
            [(long)entry.Kind, entry.Size, entry.ModifiedTime.Seconds, entry.ModifiedTime.Nanoseconds,
                (long)entry.Identity.Number, entry.Identity.Moment]);

    private static ulong MarkOf(FileIdentity identity) => MarkOf([(long)identity.Number, identity.Moment]);

    private static ulong MarkOf(ReadOnlySpan<long> values)
    {
        Span<byte> hash = stackalloc byte[SHA256.HashSizeInBytes];
        SHA256.HashData(MemoryMarshal.AsBytes(values), hash);
        return BinaryPrimitives.ReadUInt64LittleEndian(hash);
    }

    private static bool TryParse(string digits, out ulong mark) =>
        ulong.TryParse(digits, NumberStyles.AllowHexSpecifier, CultureInfo.InvariantCulture, out mark);
}
