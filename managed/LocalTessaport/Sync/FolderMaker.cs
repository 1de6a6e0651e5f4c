using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Makes folders on both sides, with those above them.</summary>
internal static class FolderMaker
{
    public static void Make(DriveEdit edit, string path)
    {
        var made = RelativePath.Root;
        foreach (var name in path.Split('\\', StringSplitOptions.RemoveEmptyEntries))
        {
            made = RelativePath.Join(made, name);
            MakeOne(edit, edit.At(made), name);
        }
    }

    private static void MakeOne(DriveEdit edit, ItemView view, string name)
    {
        if (view.Workspace is { IsFolder: false } || view.Server is { IsFolder: false })
            throw new IOException($"'{edit.Drive.WorkspacePathOf(view.Path)}' is a file; no folder can be made in its place or in it.");
        if (view is { Workspace: not null, Server: not null })
        {
            if (edit.Index.Synced.ByPath(view.Path) is null)
                edit.RecordSynced(view.Path, hash: null);
            return;
        }
        if (!NameRules.CanBeAdded(name))
            throw new IOException($"'{name}' is not a name that every platform accepts.");
        if (view.Server is null)
            edit.Drive.RequireWritable();
        if (view.Workspace is null)
            edit.Drive.Workspace.MakeFolder(view.Path, view.Server);
        if (view.Server is null)
            edit.Drive.Server.MakeFolder(view.Path, view.Workspace);
        edit.RecordSynced(view.Path, hash: null);
    }
}
