namespace Quorvex.Tessaport.API.Local;

/// <summary>One pattern in the syntax of <c>.gitignore</c>, as it applies to the paths of a drive.</summary>
internal sealed class PathPattern
{
    private const string AnyFolders = "**";

    // Null matches any number of folders.
    private readonly List<NamePattern?> _names = [];
    private readonly bool _isForFolders;
    private readonly bool _isForAnyFolder;

    /// <exception cref="FormatException">It is no pattern; the message is the reason.</exception>
    public PathPattern(string text, bool ignoresCase)
    {
        Text = text;
        RequireOneLine(text);
        var rest = WithoutSpacesAtEnd(text);
        IsNegated = rest.StartsWith('!');
        if (IsNegated)
            rest = rest[1..];
        _isForFolders = rest.EndsWith('/');
        if (_isForFolders)
            rest = rest[..^1];
        _isForAnyFolder = !rest.Contains('/');
        if (rest.StartsWith('/'))
            rest = rest[1..];
        if (rest.Length == 0)
            throw new FormatException("it names nothing");
        foreach (var name in rest.Split('/'))
            AddName(name, ignoresCase);
        // What ends in /** is for what is in a folder, and not for the folder.
        if (_names[^1] is null)
            _names.Add(NamePattern.Any);
    }

    /// <summary>The pattern as it was given.</summary>
    public string Text { get; }

    /// <summary>Whether it takes back what an earlier pattern says.</summary>
    public bool IsNegated { get; }

    /// <param name="path">The names of a path.</param>
    /// <param name="isFolder">Whether it is the path of a folder.</param>
    public bool Matches(ReadOnlySpan<string> path, bool isFolder)
    {
        if (_isForFolders && !isFolder)
            return false;
        return _isForAnyFolder ? _names[^1]!.Matches(path[^1]) : MatchesAll(path);
    }

    // As in a name, only the last place with any number of folders has to be tried again.
    private bool MatchesAll(ReadOnlySpan<string> path)
    {
        var (name, at) = (0, 0);
        var (open, openAt) = (-1, 0);
        while (at < path.Length)
        {
            if (name < _names.Count && _names[name] is null)
                (open, openAt) = (name++, at);
            else if (name < _names.Count && _names[name]!.Matches(path[at]))
                (name, at) = (name + 1, at + 1);
            else if (open >= 0)
                (name, at) = (open + 1, ++openAt);
            else
                return false;
        }
        return name == _names.Count;
    }

    private void AddName(string name, bool ignoresCase)
    {
        if (name.Length == 0)
            throw new FormatException("two slashes follow each other");
        if (name != AnyFolders)
            _names.Add(NamePattern.Parse(name, ignoresCase));
        else if (_names.Count == 0 || _names[^1] is not null)
            _names.Add(null);
    }

    private static void RequireOneLine(string text)
    {
        if (text.Trim(' ').Length == 0)
            throw new FormatException("it is empty");
        if (text.AsSpan().ContainsAny('\n', '\r', '\0'))
            throw new FormatException("it has more than one line; give each pattern by itself");
        if (text[0] == '#')
            throw new FormatException(@"it is a comment; write \# for a name that begins with #");
    }

    private static string WithoutSpacesAtEnd(string text)
    {
        var length = text.Length;
        while (length > 1 && text[length - 1] == ' ' && text[length - 2] != '\\')
            --length;
        return text[..length];
    }
}
