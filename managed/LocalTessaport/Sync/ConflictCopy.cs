using System.Globalization;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Keeps the older of two independent versions beside the newer one.</summary>
internal static class ConflictCopy
{
    /// <summary>Copies the version of one side beside the file, on both sides, and returns the copy's path.</summary>
    public static string Keep(DriveEdit edit, string path, DriveSide side, DateTime modified)
    {
        var source = side.At(path);
        var copy = ChoosePath(edit, path, modified, source);
        FileTransfer.PutOnBothSides(edit, source, edit.At(copy));
        return copy;
    }

    // A copy that was made before a kill is reused instead of made again.
    private static string ChoosePath(DriveEdit edit, string path, DateTime modified, FileSource source)
    {
        for (var number = 1; ; ++number)
        {
            var candidate = RelativePath.Join(RelativePath.FolderOf(path), NameFor(RelativePath.NameOf(path), modified, number));
            if (IsFreeOrSame(edit, SideName.Workspace, candidate, source) && IsFreeOrSame(edit, SideName.Server, candidate, source))
                return candidate;
        }
    }

    private static bool IsFreeOrSame(DriveEdit edit, SideName side, string path, FileSource source) =>
        edit.Drive.Side(side).FindAny(path) is not { } found
        || (found.Kind == EntryKind.File && FileContent.AreEqual(edit.Drive.Side(side).At(path), source));

    private static string NameFor(string name, DateTime modified, int number)
    {
        var time = modified.ToString("yyyy-MM-dd HHmmss", CultureInfo.InvariantCulture);
        return NameRules.WithNote(name, number == 1 ? $" (conflict {time})" : $" (conflict {time} {number})");
    }
}
