using System.Text.Json;

namespace Quorvex.Tessaport.API.Model;

/// <summary>Patterns of the drive, and what they leave out according to a rule that is written without them.</summary>
internal sealed class Patterns
{
    private static readonly Patterns[] All =
    [
        new(["a.txt"], (names, _) => names[^1] == "a.txt"),
        new(["*.txt", "!b.txt"], (names, _) => names[^1].EndsWith(".txt", StringComparison.Ordinal) && names[^1] != "b.txt"),
        new(["p/"], (names, isFolder) => isFolder && names[^1] == "p"),
        new(["/q", "/p/c.txt"], (names, _) => names is ["q"] or ["p", "c.txt"]),
        new(["r/**"], (names, _) => names is ["r", _, ..]),
        new(["*(conflict *"], (names, _) => names[^1].Contains("(conflict ", StringComparison.Ordinal)),
        new(["con.txt", "e"], (names, _) => names[^1] is "con.txt" or "e"),
    ];

    private readonly string[] _texts;
    private readonly Func<string[], bool, bool> _match;

    private Patterns(string[] texts, Func<string[], bool, bool> match)
    {
        _texts = texts;
        _match = match;
    }

    public static Patterns None { get; } = new([], (_, _) => false);

    public static Patterns Pick(Random random) => random.Next(3) == 0 ? None : All[random.Next(All.Length)];

    /// <summary>Whether a path, or a folder above it, is left out. A name that is a folder on one side counts as a folder.</summary>
    public bool LeaveOut(World world, string path)
    {
        var names = path.Split('/');
        return Enumerable.Range(1, names.Length).Any(count => _match(names[..count], world.IsFolderOnEither(string.Join('/', names[..count]))));
    }

    public string ToJson() => JsonSerializer.Serialize(_texts);

    public override string ToString() => _texts.Length == 0 ? "none" : string.Join(' ', _texts);
}
