using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// A pattern for one name in a path: <c>*</c>, <c>?</c>, sets such as <c>[a-z]</c>, and <c>\</c> before a character that is meant literally.
/// </summary>
internal sealed class NamePattern
{
    private readonly List<Token> _tokens;
    private readonly bool _ignoresCase;

    private NamePattern(List<Token> tokens, bool ignoresCase)
    {
        _tokens = tokens;
        _ignoresCase = ignoresCase;
    }

    /// <summary>Matches every name.</summary>
    public static NamePattern Any { get; } = new([Token.Star], ignoresCase: false);

    /// <exception cref="FormatException">It is no pattern; the message is the reason.</exception>
    public static NamePattern Parse(string text, bool ignoresCase)
    {
        var tokens = new List<Token>();
        for (var i = 0; i < text.Length;)
            tokens.Add(TokenAt(text, ref i));
        return new NamePattern(tokens, ignoresCase);
    }

    // Where a name does not match after a star, the star takes one character more. Only the last star has to be tried again,
    // because what is before it is matched as early as possible.
    public bool Matches(ReadOnlySpan<char> name)
    {
        var (token, at) = (0, 0);
        var (star, starAt) = (-1, 0);
        while (at < name.Length)
        {
            var character = CharacterAt(name, at, out var length);
            if (token < _tokens.Count && _tokens[token].IsStar)
            {
                (star, starAt) = (token++, at);
            }
            else if (token < _tokens.Count && _tokens[token].Matches(character, _ignoresCase))
            {
                ++token;
                at += length;
            }
            else if (star >= 0)
            {
                CharacterAt(name, starAt, out var taken);
                starAt += taken;
                (token, at) = (star + 1, starAt);
            }
            else
            {
                return false;
            }
        }
        while (token < _tokens.Count && _tokens[token].IsStar)
            ++token;
        return token == _tokens.Count;
    }

    private static Token TokenAt(string text, ref int i)
    {
        switch (text[i])
        {
            case '*':
                while (i < text.Length && text[i] == '*')
                    ++i;
                return Token.Star;
            case '?':
                ++i;
                return Token.AnyCharacter;
            case '[':
                ++i;
                return new Token(CharacterSet.Parse(text, ref i));
            default:
                return new Token(LiteralAt(text, ref i));
        }
    }

    /// <summary>The character at a place of a pattern, without the back-slash before it.</summary>
    internal static Rune LiteralAt(string text, ref int i)
    {
        if (text[i] == '\\' && (++i == text.Length || char.IsAsciiLetterOrDigit(text[i])))
            throw new FormatException(
                @"a back-slash only takes the meaning from a special character after it; write / between folders, and \\ for a back-slash");
        var character = CharacterAt(text, i, out var length);
        i += length;
        return character;
    }

    private static Rune CharacterAt(ReadOnlySpan<char> text, int at, out int length)
    {
        Rune.DecodeFromUtf16(text[at..], out var character, out length);
        return character;
    }

    private readonly struct Token
    {
        private readonly Rune _literal;
        private readonly CharacterSet? _set;
        private readonly Kind _kind;

        public Token(Rune literal) => (_kind, _literal) = (Kind.Literal, literal);

        public Token(CharacterSet set) => (_kind, _set) = (Kind.Set, set);

        private Token(Kind kind) => _kind = kind;

        private enum Kind
        {
            Literal,
            AnyCharacter,
            Star,
            Set,
        }

        public static Token Star { get; } = new(Kind.Star);
        public static Token AnyCharacter { get; } = new(Kind.AnyCharacter);

        public bool IsStar => _kind == Kind.Star;

        public bool Matches(Rune character, bool ignoresCase) => _kind switch
        {
            Kind.Literal => character == _literal
                || (ignoresCase && Rune.ToUpperInvariant(character) == Rune.ToUpperInvariant(_literal)),
            Kind.Set => _set!.Contains(character, ignoresCase),
            _ => true,
        };
    }
}
