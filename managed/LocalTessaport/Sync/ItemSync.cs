using System.Collections.Generic;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Makes both sides of items equal, folders with everything in them. Nothing is ever deleted by it.</summary>
internal sealed class ItemSync
{
    private readonly DriveEdit _edit;
    private readonly ChangeReport _report;
    private readonly MoveFollower _moves;

    public ItemSync(DriveEdit edit, ChangeReport report)
    {
        _edit = edit;
        _report = report;
        _moves = new MoveFollower(edit);
    }

    /// <summary>Syncs what was asked for, and lists it when all of it could be done.</summary>
    public void SyncTree(string path)
    {
        RequireReachable(path);
        var failuresBefore = _report.Failures;
        var place = _moves.Follow(path);
        var pending = new Stack<string>();
        pending.Push(place);
        if (place != path)
            pending.Push(path);
        while (pending.TryPop(out var next))
            _report.Attempt(() => SyncOne(next, pending));
        if (_report.Failures == failuresBefore)
            _report.Updated(_edit.At(place));
    }

    /// <summary>Syncs one file; a failure is thrown.</summary>
    public void SyncFile(string path)
    {
        _edit.Drive.RequireOnline();
        var place = _moves.Follow(path);
        SyncVersions(_edit.At(place));
        if (place != path && _edit.At(path) is { Exists: true, IsFolder: false } newcomer)
            SyncVersions(newcomer);
    }

    private void RequireReachable(string path)
    {
        _edit.Drive.RequireOnline();
        var view = _edit.At(path);
        if (!view.Exists && !view.IsRoot)
            throw new FileNotFoundException($"'{_edit.Drive.WorkspacePathOf(path)}' no longer exists.");
    }

    private void SyncOne(string path, Stack<string> pending)
    {
        var place = _moves.Follow(path);
        if (place != path)
        {
            _report.Updated(_edit.At(place));
            pending.Push(path);
        }
        var view = _edit.At(place);
        if (view.IsFolder && !view.SidesDiffer)
            SyncFolder(view, pending);
        else if (view.Exists)
            SyncVersions(view);
    }

    private void SyncFolder(ItemView view, Stack<string> pending)
    {
        if (!view.IsRoot)
            FolderMaker.Make(_edit, view.Path);
        if (view is not { Workspace: not null, Server: not null })
            _report.Updated(_edit.At(view.Path));
        var contents = FolderListing.Read(_edit.Drive, view.Path);
        for (var i = contents.Count - 1; i >= 0; --i)
            pending.Push(contents[i].Path);
    }

    private void SyncVersions(ItemView view)
    {
        if (view.SidesDiffer)
            throw new IOException($"'{_edit.Drive.WorkspacePathOf(view.Path)}' is a file on one side and a folder on the other; rename one.");
        if (view.Server is not { } remote)
            Send(view);
        else if (view.Workspace is not { } local)
            Fetch(view);
        else
            SyncBoth(view, local, remote);
    }

    private void SyncBoth(ItemView view, FileEntry local, FileEntry remote)
    {
        var last = _edit.Index.Synced.ByPath(view.Path);
        var isLocalNew = last?.LocalStamp != FileStamp.Of(local);
        var isRemoteNew = last?.RemoteStamp != FileStamp.Of(remote);
        if (isLocalNew && isRemoteNew)
            SyncIndependent(view, local, remote);
        else if (isLocalNew)
            Send(view);
        else if (isRemoteNew)
            Fetch(view);
    }

    private void SyncIndependent(ItemView view, FileEntry local, FileEntry remote)
    {
        var (here, there) = (_edit.Drive.Workspace, _edit.Drive.Server);
        if (FileContent.AreEqual(here.At(view.Path), there.At(view.Path)))
        {
            _edit.RecordSynced(view.Path, hash: null);
            return;
        }
        var isLocalNewer = local.Modified >= remote.Modified;
        var copy = ConflictCopy.Keep(_edit, view.Path, isLocalNewer ? there : here, isLocalNewer ? remote.Modified : local.Modified);
        _report.Created(_edit.At(copy));
        if (isLocalNewer)
            Send(view);
        else
            Fetch(view);
    }

    private void Send(ItemView view)
    {
        FileTransfer.Upload(_edit, view);
        _report.Updated(_edit.At(view.Path));
    }

    private void Fetch(ItemView view)
    {
        FileTransfer.Download(_edit, view);
        _report.Updated(_edit.At(view.Path));
    }
}
