using System.Buffers;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Writes JSON objects to a stream, one per line.</summary>
internal sealed class LineWriter
{
    private const int BlockSize = 64 * 1024;

    private readonly Stream _stream;
    private readonly ArrayBufferWriter<byte> _block = new(2 * BlockSize);
    private readonly Utf8JsonWriter _json;

    public LineWriter(Stream stream)
    {
        _stream = stream;
        _json = new Utf8JsonWriter(_block);
    }

    public void Write<T>(Action<Utf8JsonWriter, T> writeMembers, T value)
    {
        _json.WriteStartObject();
        writeMembers(_json, value);
        _json.WriteEndObject();
        _json.Flush();
        _json.Reset();
        _block.Write("\n"u8);
        if (_block.WrittenCount >= BlockSize)
            Flush();
    }

    public void Flush()
    {
        _stream.Write(_block.WrittenSpan);
        _block.ResetWrittenCount();
    }
}
