using System.Buffers;
using System.Security.Cryptography;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Hashes and compares the content of files.</summary>
internal static class FileContent
{
    private const int BlockSize = 128 * 1024;

    /// <summary>The SHA-256 of a file in hexadecimal.</summary>
    /// <exception cref="ChangedException">The file changed while it was read.</exception>
    public static string Hash(FileSource source) => Hash(source, out _);

    /// <summary>Computes the SHA-256 of a file and reports the version that was read.</summary>
    public static string Hash(FileSource source, out FileEntry seen)
    {
        using var file = source.Open();
        using var hash = IncrementalHash.CreateHash(HashAlgorithmName.SHA256);
        using var block = new RentedBlock(BlockSize);
        long offset = 0;
        int count;
        while (offset < file.Entry.Size && (count = file.Read(block.Span, offset)) > 0)
        {
            hash.AppendData(block.Span[..(int)Math.Min(count, file.Entry.Size - offset)]);
            offset += count;
        }
        Step.Reached("Hash.Read", file.Path);
        RequireUnchanged(file);
        seen = file.Entry;
        return ToText(hash);
    }

    /// <summary>Whether two files have the same content.</summary>
    /// <exception cref="ChangedException">One of the files changed while they were read.</exception>
    public static bool AreEqual(FileSource one, FileSource other) => AreEqual(one, other, out _, out _);

    /// <summary>Compares the content of two files and reports the versions that were read.</summary>
    public static bool AreEqual(FileSource one, FileSource other, out FileEntry seenOne, out FileEntry seenOther)
    {
        using var a = one.Open();
        using var b = other.Open();
        seenOne = a.Entry;
        seenOther = b.Entry;
        var areEqual = a.Entry.Size == b.Entry.Size && HoldSame(a, b);
        Step.Reached("Compare.Read", a.Path);
        RequireUnchanged(a);
        RequireUnchanged(b);
        return areEqual;
    }

    public static string ToText(IncrementalHash hash) => Convert.ToHexString(hash.GetHashAndReset()).ToLowerInvariant();

    private static bool HoldSame(OpenedFile a, OpenedFile b)
    {
        using var blockA = new RentedBlock(BlockSize);
        using var blockB = new RentedBlock(BlockSize);
        for (long offset = 0; offset < a.Entry.Size;)
        {
            var countA = ReadFull(a, blockA.Span, offset);
            var countB = ReadFull(b, blockB.Span, offset);
            if (countA == 0 || !blockA.Span[..countA].SequenceEqual(blockB.Span[..countB]))
                return false;
            offset += countA;
        }
        return true;
    }

    // Bytes beyond the size that was seen at the start belong to a later version.
    private static int ReadFull(OpenedFile file, Span<byte> block, long offset)
    {
        block = block[..(int)Math.Min(block.Length, file.Entry.Size - offset)];
        var filled = 0;
        int count;
        while (filled < block.Length && (count = file.Read(block[filled..], offset + filled)) > 0)
            filled += count;
        return filled;
    }

    private static void RequireUnchanged(OpenedFile file)
    {
        if (!file.IsUnchanged)
            throw ChangedException.KeepsChanging(file.Path);
    }
}

/// <summary>A block of memory from the shared pool; returned on disposal.</summary>
internal readonly struct RentedBlock : IDisposable
{
    private readonly byte[] _bytes;
    private readonly int _size;

    public RentedBlock(int size)
    {
        _bytes = ArrayPool<byte>.Shared.Rent(size);
        _size = size;
    }

    public Span<byte> Span => _bytes.AsSpan(0, _size);

    public void Dispose() => ArrayPool<byte>.Shared.Return(_bytes);
}
