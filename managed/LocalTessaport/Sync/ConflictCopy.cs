using System.Globalization;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Keeps the older of two independent versions beside the newer one.</summary>
internal static class ConflictCopy
{
    private const string NoteStart = " (conflict ";

    /// <summary>Copies the version of one side beside the file, on both sides, and returns the copy's path.</summary>
    public static string Keep(DriveEdit edit, string path, SideName side, DateTime modified)
    {
        var source = edit.Drive.Side(side).At(path);
        var copy = ChoosePath(path, modified, (on, candidate) => IsFreeOrSame(edit, on, candidate, source));
        FileTransfer.PutOnBothSides(edit, source, edit.At(copy));
        edit.NoteKept(side, RelativePath.FolderOf(copy));
        Mark(edit.Index, copy, path, side);
        return copy;
    }

    /// <summary>Notes in the record of a copy of which file it is another version, and from which side.</summary>
    public static void Mark(DriveIndex index, string copy, string original, SideName side) =>
        index.Synced.Put(index.Synced.ByPath(copy)! with { Conflict = new ConflictMark(RelativePath.NameOf(original), side) });

    /// <summary>
    /// Marks the first record of a file if it is a copy that was kept by a process that was killed before it could save that.
    /// </summary>
    public static SyncedRecord Recognise(SyncedRecord record, ItemView view) =>
        record.IsFolder || view.Workspace is not { } entry || OriginalOf(RelativePath.NameOf(record.Path), entry.Modified) is not { } original
        || view.Drive.Workspace.Find(RelativePath.Join(RelativePath.FolderOf(record.Path), original)) is not { IsFolder: false }
            ? record
            : record with { Conflict = new ConflictMark(original, null) };

    // A copy has the time that is in its name, which tells it from a file that a user only named alike.
    private static string? OriginalOf(string name, DateTime modified)
    {
        var start = name.LastIndexOf(NoteStart, StringComparison.Ordinal);
        var end = start < 0 ? -1 : name.IndexOf(')', start);
        if (end < 0)
            return null;
        var original = name[..start] + name[(end + 1)..];
        var words = name[(start + NoteStart.Length)..end].Split(' ');
        var number = words.Length == 3 && int.TryParse(words[2], NumberStyles.None, CultureInfo.InvariantCulture, out var parsed) ? parsed : 1;
        return NameFor(original, modified, number) == name ? original : null;
    }

    /// <summary>The path of a copy. One that was made before a kill is reused instead of made again.</summary>
    /// <param name="path">The file.</param>
    /// <param name="modified">The last write of the version to be kept.</param>
    /// <param name="isFreeOrSame">Whether a place on a side is free or holds that version already.</param>
    public static string ChoosePath(string path, DateTime modified, Func<SideName, string, bool> isFreeOrSame)
    {
        for (var number = 1; ; ++number)
        {
            var candidate = RelativePath.Join(RelativePath.FolderOf(path), NameFor(RelativePath.NameOf(path), modified, number));
            if (isFreeOrSame(SideName.Workspace, candidate) && isFreeOrSame(SideName.Server, candidate))
                return candidate;
        }
    }

    private static bool IsFreeOrSame(DriveEdit edit, SideName side, string path, FileSource source) =>
        edit.Drive.Side(side).FindAny(path) is not { } found
        || (found.Kind == EntryKind.File && FileContent.AreEqual(edit.Drive.Side(side).At(path), source));

    private static string NameFor(string name, DateTime modified, int number)
    {
        var time = modified.ToString("yyyy-MM-dd HHmmss", CultureInfo.InvariantCulture);
        return NameRules.WithNote(name, number == 1 ? $"{NoteStart}{time})" : $"{NoteStart}{time} {number})");
    }
}
