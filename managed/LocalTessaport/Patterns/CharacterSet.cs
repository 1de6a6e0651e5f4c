using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The characters in brackets in a pattern: <c>[abc]</c>, <c>[a-z]</c>, <c>[!a-z]</c>, <c>[[:digit:]_]</c>.</summary>
internal sealed class CharacterSet
{
    private const string NoEnd = @"a bracket is not closed; write \[ for the character itself";

    private static readonly Dictionary<string, Func<char, bool>> Classes = new()
    {
        ["alnum"] = char.IsAsciiLetterOrDigit,
        ["alpha"] = char.IsAsciiLetter,
        ["blank"] = c => c is ' ' or '\t',
        ["cntrl"] = c => c is < ' ' or '\x7f',
        ["digit"] = char.IsAsciiDigit,
        ["graph"] = c => c is > ' ' and < '\x7f',
        ["lower"] = char.IsAsciiLetterLower,
        ["print"] = c => c is >= ' ' and < '\x7f',
        ["punct"] = c => c is > ' ' and < '\x7f' && !char.IsAsciiLetterOrDigit(c),
        ["space"] = c => c is ' ' or (>= '\t' and <= '\r'),
        ["upper"] = char.IsAsciiLetterUpper,
        ["xdigit"] = char.IsAsciiHexDigit,
    };

    private readonly List<(Rune First, Rune Last)> _ranges = [];
    private readonly List<Func<char, bool>> _classes = [];
    private readonly bool _isNegated;

    private CharacterSet(bool isNegated) => _isNegated = isNegated;

    /// <param name="text">The pattern.</param>
    /// <param name="i">The place after the opening bracket; then the one after the closing bracket.</param>
    /// <exception cref="FormatException">It is no set; the message is the reason.</exception>
    public static CharacterSet Parse(string text, ref int i)
    {
        var isNegated = i < text.Length && text[i] is '!' or '^';
        if (isNegated)
            ++i;
        var set = new CharacterSet(isNegated);
        // A closing bracket in the first place is a character of the set.
        for (var first = true; ; first = false)
        {
            if (i >= text.Length)
                throw new FormatException(NoEnd);
            if (text[i] == ']' && !first)
                break;
            set.AddAt(text, ref i);
        }
        ++i;
        return set;
    }

    public bool Contains(Rune character, bool ignoresCase) =>
        _isNegated != (Has(character) || (ignoresCase && (Has(Rune.ToUpperInvariant(character)) || Has(Rune.ToLowerInvariant(character)))));

    private bool Has(Rune character)
    {
        foreach (var (first, last) in _ranges)
        {
            if (character >= first && character <= last)
                return true;
        }
        foreach (var contains in _classes)
        {
            if (character.IsAscii && contains((char)character.Value))
                return true;
        }
        return false;
    }

    private void AddAt(string text, ref int i)
    {
        if (text.AsSpan(i).StartsWith("[:"))
        {
            AddClassAt(text, ref i);
            return;
        }
        var first = NamePattern.LiteralAt(text, ref i);
        var last = first;
        if (i + 1 < text.Length && text[i] == '-' && text[i + 1] != ']')
        {
            ++i;
            last = NamePattern.LiteralAt(text, ref i);
        }
        _ranges.Add((first, last));
    }

    private void AddClassAt(string text, ref int i)
    {
        var end = text.IndexOf(":]", i + 2, StringComparison.Ordinal);
        if (end < 0)
            throw new FormatException(NoEnd);
        var name = text[(i + 2)..end];
        _classes.Add(Classes.GetValueOrDefault(name)
            ?? throw new FormatException($"'[:{name}:]' is no class of characters; there are {string.Join(", ", Classes.Keys)}"));
        i = end + 2;
    }
}
