using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Brings the content of one file to a side, or to both.</summary>
internal static class FileTransfer
{
    /// <summary>Copies the workspace's file to the server.</summary>
    public static void Upload(DriveEdit edit, ItemView view)
    {
        edit.Drive.RequireWritable();
        Copy(edit, view.Path, edit.Drive.Workspace, edit.Drive.Server, view.Server);
    }

    /// <summary>Copies the server's file to the workspace.</summary>
    public static void Download(DriveEdit edit, ItemView view) =>
        Copy(edit, view.Path, edit.Drive.Server, edit.Drive.Workspace, view.Workspace);

    /// <summary>Puts a file from anywhere on both sides. Both copies are complete before the first one appears.</summary>
    public static void PutOnBothSides(DriveEdit edit, FileSource source, ItemView target)
    {
        edit.Drive.RequireWritable();
        RequireName(target.Path);
        FolderMaker.Make(edit, RelativePath.FolderOf(target.Path));
        using var copy = StagedCopy.Make(source, edit.Drive.Workspace, edit.Drive.Server);
        copy.Commit(0, edit.Drive.Workspace, target.Path, target.Workspace);
        copy.Commit(1, edit.Drive.Server, target.Path, target.Server);
        edit.RecordSynced(target.Path, copy.Hash);
    }

    private static void Copy(DriveEdit edit, string path, DriveSide from, DriveSide to, FileEntry? expected)
    {
        RequireName(path);
        FolderMaker.Make(edit, RelativePath.FolderOf(path));
        using var copy = StagedCopy.Make(from.At(path), to);
        copy.Commit(0, to, path, expected);
        edit.RecordSynced(path, copy.Hash);
    }

    private static void RequireName(string path)
    {
        if (!NameRules.CanBeAdded(RelativePath.NameOf(path)))
            throw new IOException($"'{RelativePath.NameOf(path)}' is not a name that every platform accepts.");
    }
}
