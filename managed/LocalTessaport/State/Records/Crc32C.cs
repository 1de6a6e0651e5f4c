using System.Buffers.Binary;
using System.Numerics;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The CRC-32C of data that comes in pieces; the processor has an instruction for it.</summary>
internal struct Crc32C
{
    private uint _inverted = uint.MaxValue;

    public Crc32C()
    {
    }

    public readonly uint Value => ~_inverted;

    public static uint Of(ReadOnlySpan<byte> data)
    {
        var sum = new Crc32C();
        sum.Add(data);
        return sum.Value;
    }

    public void Add(ReadOnlySpan<byte> data)
    {
        var sum = _inverted;
        var words = MemoryMarshal.Cast<byte, ulong>(data);
        foreach (var word in words)
            sum = BitOperations.Crc32C(sum, BitConverter.IsLittleEndian ? word : BinaryPrimitives.ReverseEndianness(word));
        foreach (var one in data[(words.Length * sizeof(ulong))..])
            sum = BitOperations.Crc32C(sum, one);
        _inverted = sum;
    }
}
