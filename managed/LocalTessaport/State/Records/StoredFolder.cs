using System.Numerics;
using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The records of what is directly in one folder, and where they are in the file.</summary>
internal sealed class StoredFolder
{
    private const int MostStacked = 256;

    private readonly byte[] _content;
    private Places? _places;

    public StoredFolder(byte[] content, string path, int count, int start, int end)
    {
        _content = content;
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

    public RecordReader ReaderAt(int position) => new(_content.AsSpan(0, End), position);

    public SyncedRecord? Find(ReadOnlySpan<char> name)
    {
        var number = NumberOf(name);
        if (number < 0)
            return null;
        var from = ReaderAt(_places!.Positions[number]);
        return SyncedEntry.Read(ref from, RelativePath.Join(Path, from.String()));
    }

    /// <summary>Which of the records, from 0, is that of a name; negative if none is.</summary>
    public int NumberOf(ReadOnlySpan<char> name)
    {
        var places = _places ??= FindPlaces();
        var mask = places.Numbers.Length - 1;
        for (var slot = HashOf(name) & mask; places.Numbers[slot] is var number and > 0; slot = (slot + 1) & mask)
        {
            if (IsSame(ReaderAt(places.Positions[number - 1]).Text(), name))
                return number - 1;
        }
        return -1;
    }

    public string NameAt(int number) => ReaderAt(_places!.Positions[number]).String();

    /// <summary>Whether an entry is the file of a record on one side, as last synced.</summary>
    public bool IsSynced(int number, SideName side, in FileEntry entry)
    {
        var from = ReaderAt(_places!.Positions[number]);
        from.Text();
        return SyncedEntry.IsSynced(from, side, entry);
    }

    private Places FindPlaces()
    {
        var places = new Places(new int[Count], new int[(int)BitOperations.RoundUpToPowerOf2((uint)(2 * Count + 1))]);
        var mask = places.Numbers.Length - 1;
        var from = ReaderAt(Start);
        Span<char> buffer = stackalloc char[MostStacked];
        for (var number = 0; number < Count; ++number)
        {
            places.Positions[number] = from.Position;
            var slot = HashOf(Decode(from.Text(), buffer)) & mask;
            while (places.Numbers[slot] > 0)
                slot = (slot + 1) & mask;
            places.Numbers[slot] = number + 1;
            SyncedEntry.Skip(ref from);
        }
        return places;
    }

    private static ReadOnlySpan<char> Decode(ReadOnlySpan<byte> text, Span<char> buffer) =>
        text.Length <= buffer.Length ? buffer[..Encoding.UTF8.GetChars(text, buffer)] : Encoding.UTF8.GetString(text);

    private static bool IsSame(ReadOnlySpan<byte> candidate, ReadOnlySpan<char> name)
    {
        Span<char> buffer = stackalloc char[MostStacked];
        return Decode(candidate, buffer).Equals(name, RelativePath.Comparison);
    }

    private static int HashOf(ReadOnlySpan<char> name) => string.GetHashCode(name, RelativePath.Comparison);

    /// <param name="Positions">Where each record is in the file.</param>
    /// <param name="Numbers">A table of open addresses: behind the hash of its name, the number of each record from 1, 0 for none.</param>
    private sealed record Places(int[] Positions, int[] Numbers);
}
