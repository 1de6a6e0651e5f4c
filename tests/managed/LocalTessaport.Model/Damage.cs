using System.Text;

namespace Quorvex.Tessaport.API.Model;

/// <summary>Damages the bytes of a file at random, as a disk, an editor or another program may.</summary>
internal sealed class Damage
{
    private const int MostChanges = 3;
    private const int Depth = 3000;

    private static readonly string[] Tokens =
    [
        "null", "true", "{", "}", "[", "]", "\"", ",", ":", "-1", "0", "9223372036854775808", "1e400", "\\ud800", "\\u0000", "\0", "\n", "\uFEFF",
        "\\", "..", "*", "**/", "[!", "?", "!", "//", "conflict", "version",
    ];

    private readonly Random _random;

    public Damage(Random random) => _random = random;

    public byte[] Of(byte[] content)
    {
        var damaged = content;
        for (var left = _random.Next(1, MostChanges + 1); left > 0; --left)
            damaged = Once(damaged);
        return damaged;
    }

    /// <summary>A pattern of a drive, of the characters that have a meaning there.</summary>
    public string Pattern()
    {
        const string characters = "*?[]!-/\\#ab. ä\u0001";
        return new string([.. Enumerable.Range(0, _random.Next(1, 24)).Select(_ => characters[_random.Next(characters.Length)])]);
    }

    private byte[] Once(byte[] content)
    {
        var place = _random.Next(content.Length + 1);
        var end = Math.Min(content.Length, place + _random.Next(1, 40));
        return _random.Next(7) switch
        {
            0 => content[..place],
            1 => content[place..],
            2 => Flipped(content, place),
            3 => [.. content[..place], .. content[end..]],
            4 => [.. content[..end], .. content[place..]],
            5 => [.. content[..place], .. Encoding.UTF8.GetBytes(new string(_random.Next(2) == 0 ? '[' : '{', Depth)), .. content[place..]],
            _ => [.. content[..place], .. Encoding.UTF8.GetBytes(Tokens[_random.Next(Tokens.Length)]), .. content[place..]],
        };
    }

    private byte[] Flipped(byte[] content, int place)
    {
        if (place == content.Length)
            return content;
        var flipped = content.ToArray();
        flipped[place] ^= (byte)(1 << _random.Next(8));
        return flipped;
    }
}
