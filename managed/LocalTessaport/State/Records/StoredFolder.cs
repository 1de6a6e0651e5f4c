using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The records of what is directly in one folder, and where they are in the file.</summary>
internal sealed class StoredFolder
{
    // A table of open addresses: the position of a record behind the hash of its name, 0 for none.
    private int[]? _positions;

    public StoredFolder(string path, int count, int start, int end)
    {
        Path = path;
        Count = count;
        Start = start;
        End = end;
    }

    public string Path { get; }
    public int Count { get; }
    public int Start { get; }
    public int End { get; }

    /// <summary>The same folder in other upper and lower case; null on most drives.</summary>
    public StoredFolder? OtherSpelling { get; set; }

    public RecordReader ReaderAt(byte[] content, int position) => new(content.AsSpan(0, End), position);

    public SyncedRecord? Find(byte[] content, ReadOnlySpan<char> name)
    {
        if (Count == 0)
            return null;
        var positions = _positions ??= Positions(content);
        var mask = positions.Length - 1;
        for (var slot = HashOf(name) & mask; positions[slot] is var position and > 0; slot = (slot + 1) & mask)
        {
            var from = ReaderAt(content, position);
            var candidate = from.Text();
            if (IsSame(candidate, name))
                return SyncedEntry.Read(ref from, RelativePath.Join(Path, Encoding.UTF8.GetString(candidate)));
        }
        return null;
    }

    private int[] Positions(byte[] content)
    {
        var positions = new int[(int)System.Numerics.BitOperations.RoundUpToPowerOf2((uint)(2 * Count))];
        var mask = positions.Length - 1;
        var from = ReaderAt(content, Start);
        Span<char> name = stackalloc char[MostStacked];
        for (var left = Count; left > 0; --left)
        {
            var position = from.Position;
            var slot = HashOf(Decode(from.Text(), name)) & mask;
            while (positions[slot] > 0)
                slot = (slot + 1) & mask;
            positions[slot] = position;
            SyncedEntry.Skip(ref from);
        }
        return positions;
    }

    private const int MostStacked = 256;

    private static ReadOnlySpan<char> Decode(ReadOnlySpan<byte> text, Span<char> buffer) =>
        text.Length <= buffer.Length ? buffer[..Encoding.UTF8.GetChars(text, buffer)] : Encoding.UTF8.GetString(text);

    private static bool IsSame(ReadOnlySpan<byte> candidate, ReadOnlySpan<char> name)
    {
        Span<char> buffer = stackalloc char[MostStacked];
        return Decode(candidate, buffer).Equals(name, RelativePath.Comparison);
    }

    private static int HashOf(ReadOnlySpan<char> name) => string.GetHashCode(name, RelativePath.Comparison);
}
