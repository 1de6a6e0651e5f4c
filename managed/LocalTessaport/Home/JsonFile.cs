using System.Text.Json;
using System.Text.Json.Nodes;
using System.Text.Unicode;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads the JSON files of the home that people and other programs write.</summary>
internal static class JsonFile
{
    // A drive takes a few hundred bytes.
    private const long MostBytes = 64 << 20;

    /// <summary>Reads an existing file.</summary>
    /// <exception cref="InvalidDataException">The content is invalid; the message is the reason, without the file's name.</exception>
    public static JsonTree Read(string path) => Parsed(path, static text => JsonTree.Parse(text.Span));

    /// <summary>Reads an existing file in order to change it. Its members are looked at on first use.</summary>
    /// <exception cref="InvalidDataException">The content is invalid; the message is the reason, without the file's name.</exception>
    public static JsonNode? ReadForChange(string path) => Parsed(path, static text => JsonNode.Parse(text.Span));

    private static T Parsed<T>(string path, Func<ReadOnlyMemory<byte>, T> parse)
    {
        var text = ReadUtf8(path);
        try
        {
            return parse(text);
        }
        catch (JsonException e)
        {
            throw new InvalidDataException(e.Message.TrimEnd('.'));
        }
        catch (InvalidOperationException)
        {
            // The file is UTF-8, so only an escape such as \ud800 on its own cannot be turned into a string.
            throw new InvalidDataException("a \\u escape in it is only half of a character (a surrogate without its partner)");
        }
    }

    private static ReadOnlyMemory<byte> ReadUtf8(string path)
    {
        using var stream = HomeFile.OpenForReading(path);
        if (stream.Length > MostBytes)
            throw new InvalidDataException($"it is larger than {MostBytes >> 20} MB");
        using var content = new MemoryStream();
        stream.CopyTo(content);
        var bytes = content.GetBuffer().AsMemory(0, (int)content.Length);
        if (!Utf8.IsValid(bytes.Span))
            throw new InvalidDataException($"it is not UTF-8 text (line {LineOfInvalidByte(bytes.Span)}); save it as UTF-8");
        return bytes.Span is [0xEF, 0xBB, 0xBF, ..] ? bytes[3..] : bytes;
    }

    private static int LineOfInvalidByte(ReadOnlySpan<byte> text)
    {
        Utf8.ToUtf16(text, new char[text.Length], out var valid, out _, replaceInvalidSequences: false);
        return text[..valid].Count((byte)'\n') + 1;
    }
}
