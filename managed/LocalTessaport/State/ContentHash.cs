using System.Buffers.Binary;

namespace Quorvex.Tessaport.API.Local;

/// <summary>A SHA-256 in 32 bytes, since one is kept for every synced file; the default value means unknown.</summary>
internal readonly record struct ContentHash(ulong First, ulong Second, ulong Third, ulong Fourth)
{
    private const int Size = 32;

    public static ContentHash Unknown => default;

    public bool IsKnown => this != default;

    public static ContentHash Parse(ReadOnlySpan<char> hexadecimal)
    {
        var bytes = Convert.FromHexString(hexadecimal);
        if (bytes.Length != Size)
            throw new FormatException($"'{hexadecimal}' is not a hash.");
        return new ContentHash(Word(bytes, 0), Word(bytes, 1), Word(bytes, 2), Word(bytes, 3));
    }

    /// <summary>Hexadecimal, in lower case.</summary>
    public override string ToString()
    {
        Span<byte> bytes = stackalloc byte[Size];
        BinaryPrimitives.WriteUInt64BigEndian(bytes, First);
        BinaryPrimitives.WriteUInt64BigEndian(bytes[8..], Second);
        BinaryPrimitives.WriteUInt64BigEndian(bytes[16..], Third);
        BinaryPrimitives.WriteUInt64BigEndian(bytes[24..], Fourth);
        return Convert.ToHexString(bytes).ToLowerInvariant();
    }

    private static ulong Word(byte[] bytes, int index) => BinaryPrimitives.ReadUInt64BigEndian(bytes.AsSpan(8 * index));
}
