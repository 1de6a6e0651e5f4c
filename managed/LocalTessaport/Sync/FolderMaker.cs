namespace Quorvex.Tessaport.API.Local;

/// <summary>Creates folders on both sides, with the folders above them.</summary>
internal static class FolderMaker
{
    public static void Make(DriveEdit edit, string path)
    {
        var made = RelativePath.Root;
        foreach (var name in path.Split('\\', StringSplitOptions.RemoveEmptyEntries))
        {
            made = RelativePath.Join(made, name);
            MakeOne(edit, made, name);
        }
    }

    /// <summary>Creates a folder of a snapshot on the side on which it is missing.</summary>
    public static void MakeMissing(DriveEdit edit, SnapshotNode folder, SideName side)
    {
        var path = folder.Path;
        RequireAllowed(edit, folder.Name, side);
        MakeOn(edit.Drive.Side(side), path, like: folder[side.Opposite()]);
        folder[side] = Find(edit, side, path);
    }

    private static void MakeOne(DriveEdit edit, string path, string name)
    {
        var view = edit.At(path);
        if (view.Workspace is { IsFolder: false } || view.Server is { IsFolder: false })
            throw new IOException($"'{edit.Drive.WorkspacePathOf(path)}' is a file; no folder can be made in its place or in it.");
        foreach (var side in SideNames.Both)
        {
            if (view.On(side) is not null)
                continue;
            RequireAllowed(edit, name, side);
            MakeOn(edit.Drive.Side(side), path, like: view.On(side.Opposite()));
        }
        if (view is { Workspace: not null, Server: not null } && edit.Index.Synced.ByPath(path) is not null)
            return;
        var (local, remote) = (Find(edit, SideName.Workspace, path), Find(edit, SideName.Server, path));
        edit.RecordSynced(SyncedRecord.ForFolder(path, local, remote), new ItemView(edit.Drive, path, local, remote));
    }

    /// <exception cref="Exception">The name or the drive does not allow it.</exception>
    public static void RequireAllowed(DriveEdit edit, string name, SideName side)
    {
        NameRules.Require(name);
        if (side == SideName.Server)
            edit.Drive.RequireWritable();
    }

    private static void MakeOn(DriveSide side, string path, FileEntry? like)
    {
        if (side.FindAny(path) is { Kind: EntryKind.Other })
            throw Obstacle.At(side, path);
        side.MakeFolder(path, like);
    }

    private static FileEntry Find(DriveEdit edit, SideName side, string path) =>
        edit.Drive.Side(side).Find(path) is { IsFolder: true } entry ? entry : throw new ChangedException(edit.Drive.Side(side).PathOf(path));
}
