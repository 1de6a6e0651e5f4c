using System.Buffers.Binary;
using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads the values that a <see cref="BinaryWriter"/> wrote, from memory.</summary>
internal ref struct RecordReader
{
    /// <summary>The reason that users read about a file from which nothing sensible can be read.</summary>
    public const string Damaged = "it is incomplete or damaged";

    private readonly ReadOnlySpan<byte> _data;

    public RecordReader(ReadOnlySpan<byte> data, int position = 0)
    {
        _data = data;
        Position = position;
    }

    public int Position { get; private set; }

    public readonly bool IsAtEnd => Position == _data.Length;

    /// <summary>A number of seven bits a byte, the lowest first.</summary>
    public ulong Number()
    {
        var value = 0UL;
        for (var shift = 0; shift < 64; shift += 7)
        {
            if (Position == _data.Length)
                break;
            var next = _data[Position++];
            value |= (ulong)(next & 0x7f) << shift;
            if (next < 0x80)
                return value;
        }
        throw new FormatException(Damaged);
    }

    /// <summary>A number of things, each of which takes at least one byte.</summary>
    public int Count()
    {
        var count = Number();
        return count <= (ulong)(_data.Length - Position) ? (int)count : throw new FormatException(Damaged);
    }

    public uint Fixed32() => BinaryPrimitives.ReadUInt32LittleEndian(Bytes(sizeof(uint)));

    public ulong Fixed64() => BinaryPrimitives.ReadUInt64LittleEndian(Bytes(sizeof(ulong)));

    public Guid Id() => new(Bytes(16));

    /// <summary>The UTF-8 of a string.</summary>
    public ReadOnlySpan<byte> Text() => Bytes(Count());

    public string String() => Encoding.UTF8.GetString(Text());

    public void Skip(int count) => Bytes(count);

    private ReadOnlySpan<byte> Bytes(int count)
    {
        if (count > _data.Length - Position)
            throw new FormatException(Damaged);
        var bytes = _data.Slice(Position, count);
        Position += count;
        return bytes;
    }
}
