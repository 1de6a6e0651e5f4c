namespace Quorvex.Tessaport.API.Local;

/// <summary>Copies a file from anywhere to both sides.</summary>
internal static class FileTransfer
{
    /// <summary>Puts a file on both sides. Both copies are complete before the first one appears.</summary>
    /// <param name="edit">The drive.</param>
    /// <param name="source">The file to be copied.</param>
    /// <param name="target">The item that may be replaced.</param>
    /// <param name="expected">The version that is meant; null for whatever the file holds now.</param>
    /// <exception cref="ChangedException">The file is another version than the expected one. Nothing was replaced.</exception>
    public static void PutOnBothSides(DriveEdit edit, FileSource source, ItemView target, FileEntry? expected = null)
    {
        edit.Drive.RequireWritable();
        NameRules.Require(RelativePath.NameOf(target.Path));
        FolderMaker.Make(edit, RelativePath.FolderOf(target.Path));
        using var copy = StagedCopy.Make(source, edit.Drive.Workspace, edit.Drive.Server);
        if (expected is { } meant && !copy.Source.IsUnchangedSince(meant))
            throw new ChangedException(source.Path);
        var local = copy.Commit(0, edit.Drive.Workspace, target.Path, target.Workspace);
        Step.Reached("Put.BetweenSides", target.Path);
        var remote = copy.Commit(1, edit.Drive.Server, target.Path, target.Server);
        edit.RecordSynced(
            SyncedRecord.ForFile(target.Path, SeenVersion.Placed(local), SeenVersion.Placed(remote), ContentHash.Parse(copy.Hash)),
            new ItemView(edit.Drive, target.Path, local, remote));
    }
}
