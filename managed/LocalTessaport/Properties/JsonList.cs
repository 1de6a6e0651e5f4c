using System.Buffers;
using System.Text;
using System.Text.Encodings.Web;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>A JSON array as the value of a property.</summary>
internal static class JsonList
{
    private static readonly JsonWriterOptions Format = new() { Encoder = JavaScriptEncoder.UnsafeRelaxedJsonEscaping };

    /// <param name="writeElements">Writes the elements.</param>
    public static string Make(Action<Utf8JsonWriter> writeElements)
    {
        var text = new ArrayBufferWriter<byte>();
        using var json = new Utf8JsonWriter(text, Format);
        json.WriteStartArray();
        writeElements(json);
        json.WriteEndArray();
        json.Flush();
        return Encoding.UTF8.GetString(text.WrittenSpan);
    }
}
