using System.Globalization;
using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Tells the next request, after a kill, what was being replaced or removed. It is a file beside the staged one that exists
/// from before an unchecked item comes into the staging folder until that item was checked.
/// </summary>
internal sealed class ReplacementRecord
{
    public const string AsideSuffix = ".old";

    private const string Suffix = ".place";
    private const int MostBytes = 256 * 1024;

    private readonly OpenFolder _staging;
    private readonly string _name;

    private ReplacementRecord(OpenFolder staging, string name)
    {
        _staging = staging;
        _name = name;
    }

    /// <summary>Writes the record for a staged name.</summary>
    /// <param name="place">The relative path that is being replaced or removed.</param>
    /// <param name="expected">What is expected to be there.</param>
    /// <param name="prepared">The file that is put there; unknown for a removal.</param>
    public static ReplacementRecord Write(OpenFolder staging, string staged, string place, FileEntry expected, FileIdentity prepared)
    {
        var time = expected.ModifiedTime;
        var text = string.Create(CultureInfo.InvariantCulture,
            $"{expected.IsFolder}\n{expected.Size}\n{time.Seconds}\n{time.Nanoseconds}\n{expected.Identity}\n{prepared}\n{place}");
        using (var file = staging.CreateFile(staged + Suffix))
            FileHandle.Write(file, Encoding.UTF8.GetBytes(text), 0, Path.Join(staging.Path, staged + Suffix));
        return new ReplacementRecord(staging, staged + Suffix);
    }

    /// <summary>Removes the record, once everything in the staging folder has been checked.</summary>
    public void Settle() => _staging.TryDelete(_name);

    /// <summary>Puts back items that a killed process took out of their places before it had checked them.</summary>
    public static void Recover(OpenFolder root, OpenFolder staging)
    {
        foreach (var (name, entry) in staging.Read())
        {
            if (!entry.IsFolder && name.EndsWith(Suffix, StringComparison.Ordinal))
                Recover(root, staging, name);
        }
    }

    private static void Recover(OpenFolder root, OpenFolder staging, string name)
    {
        if (Parse(ReadText(staging, name)) is not { } known)
            return;
        var staged = name[..^Suffix.Length];
        if (staging.Find(staged) is { } cameOut && cameOut.Identity != known.Prepared && !Removal.IsExpected(cameOut, known.Expected))
            PutBack(root, staging, staged, known.Place);
        // Taken out by a process that was killed before it put the prepared file there.
        if (staging.Find(staged + AsideSuffix) is not { } aside)
            return;
        if (!Removal.IsExpected(aside, known.Expected) || Find(root, known.Place) is null)
            PutBack(root, staging, staged + AsideSuffix, known.Place);
    }

    private static void PutBack(OpenFolder root, OpenFolder staging, string staged, string place)
    {
        using var folder = RelativePath.FolderOf(place) is { Length: > 0 } path ? root.TryOpen(path) : null;
        new Placement(staging, staged, default, folder ?? root, place).PutBackOrBeside();
    }

    private static FileEntry? Find(OpenFolder root, string place)
    {
        if (RelativePath.FolderOf(place) is not { Length: > 0 } path)
            return root.Find(place);
        using var folder = root.TryOpen(path);
        return folder?.Find(RelativePath.NameOf(place));
    }

    private static string ReadText(OpenFolder staging, string name)
    {
        using var file = staging.OpenFile(name);
        var bytes = new byte[Math.Min(file.Entry.Size, MostBytes)];
        return Encoding.UTF8.GetString(bytes, 0, file.Read(bytes, 0));
    }

    // A record that is not complete was being written when the process was killed, so nothing had been taken out.
    private static (FileEntry Expected, FileIdentity Prepared, string Place)? Parse(string text)
    {
        var lines = text.Split('\n', 7);
        if (lines.Length < 7 || RelativePath.TryParse(lines[6]) is not { Length: > 0 } place)
            return null;
        try
        {
            var expected = new FileEntry
            {
                Kind = bool.Parse(lines[0]) ? EntryKind.Folder : EntryKind.File,
                Size = long.Parse(lines[1], CultureInfo.InvariantCulture),
                ModifiedTime = new FileTime(
                    long.Parse(lines[2], CultureInfo.InvariantCulture), int.Parse(lines[3], CultureInfo.InvariantCulture)),
                Identity = FileIdentity.Parse(lines[4]),
            };
            return (expected, FileIdentity.Parse(lines[5]), place);
        }
        catch (FormatException)
        {
            return null;
        }
    }
}
