namespace Quorvex.Tessaport.API.Local;

/// <summary>The patterns of a drive: what they match is left out on both sides, folders with everything in them.</summary>
internal sealed class IgnoreRules
{
    private static readonly bool IgnoresCase = !ReferenceEquals(RelativePath.Comparer, StringComparer.Ordinal);

    private readonly List<PathPattern> _patterns = [];

    /// <param name="drive">The name of the drive, for the reason.</param>
    /// <param name="patterns">At least one, in the syntax of <c>.gitignore</c>; later ones come before earlier ones.</param>
    /// <exception cref="InvalidDataException">One of them is no pattern; the message is the reason.</exception>
    public IgnoreRules(string drive, IEnumerable<string> patterns)
    {
        foreach (var text in patterns)
        {
            try
            {
                _patterns.Add(new PathPattern(text, IgnoresCase));
            }
            catch (FormatException e)
            {
                throw new InvalidDataException($"the pattern '{text}' of the drive '{drive}' cannot be used: {e.Message}");
            }
        }
    }

    /// <summary>As they were given.</summary>
    public IEnumerable<string> Patterns => _patterns.Select(pattern => pattern.Text);

    /// <summary>The pattern that leaves out an item or a folder that it is in; null if none does.</summary>
    public string? PatternFor(string path, bool isFolder)
    {
        var names = NamesOf(path);
        for (var count = 1; count <= names.Length; ++count)
        {
            if (PatternFor(names.AsSpan(0, count), isFolder || count < names.Length) is { } pattern)
                return pattern;
        }
        return null;
    }

    /// <summary>The pattern that leaves out an item, if the folders above it are not left out; null if none does.</summary>
    public string? PatternInFolder(string path, bool isFolder) => PatternFor(NamesOf(path).AsSpan(), isFolder);

    private string? PatternFor(ReadOnlySpan<string> names, bool isFolder)
    {
        for (var i = _patterns.Count - 1; i >= 0; --i)
        {
            if (_patterns[i].Matches(names, isFolder))
                return _patterns[i].IsNegated ? null : _patterns[i].Text;
        }
        return null;
    }

    private static string[] NamesOf(string path) => path.Split('\\', StringSplitOptions.RemoveEmptyEntries);
}
