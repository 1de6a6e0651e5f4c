using System.Globalization;

namespace Quorvex.Tessaport.API.Model;

/// <summary>A line of the record that a preloaded library made of what a process changes; see tests/support/RecordedChanges.cpp.</summary>
internal sealed record RecordedChange(string Kind, string[] Words)
{
    public static List<RecordedChange> ReadAll(string file) =>
        File.Exists(file) ? File.ReadLines(file).Select(Parse).ToList() : [];

    public ulong Number => ulong.Parse(Words[Kind == "create" ? 1 : 0], CultureInfo.InvariantCulture);

    public override string ToString() => $"{Kind} {string.Join(' ', Words.Select(word => word.Length > 120 ? word[..120] + "..." : word))}";

    public long NumberAt(int word) => long.Parse(Words[word], CultureInfo.InvariantCulture);

    private static RecordedChange Parse(string line)
    {
        var words = line.Split('\t');
        return new RecordedChange(words[0], words[1..]);
    }
}
