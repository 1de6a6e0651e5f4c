using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Does on one side the renames and moves that were done on the other.</summary>
internal sealed class MoveFollower
{
    private readonly DriveEdit _edit;

    public MoveFollower(DriveEdit edit) => _edit = edit;

    /// <summary>Follows the item that stands, or stood, at a path; gives the path at which it stands on both sides now.</summary>
    public string Follow(string path)
    {
        FollowFoldersAbove(path);
        var view = _edit.At(path);
        return FollowArrival(view) ?? FollowDeparture(view) ?? path;
    }

    // A folder is moved as a whole, not emptied file by file.
    private void FollowFoldersAbove(string path)
    {
        for (var end = path.IndexOf('\\'); end >= 0; end = path.IndexOf('\\', end + 1))
            FollowArrival(_edit.At(path[..end]));
    }

    /// <summary>What stands here on one side came from a place where its counterpart still is.</summary>
    private string? FollowArrival(ItemView view)
    {
        var (local, remote) = (_edit.Drive.Workspace, _edit.Drive.Server);
        if (view is { Workspace: { } here, Server: null } && _edit.Index.Synced.ByLocal(here.Identity) is { } moved
            && CanMove(moved, view.Path) && HasLeft(local, moved.Path, moved.Local) && StaysAt(remote, moved))
            return Move(remote, moved, view.Path);
        if (view is { Workspace: null, Server: { } there } && _edit.Index.Synced.ByRemote(there.Identity) is { } sent
            && CanMove(sent, view.Path) && HasLeft(remote, sent.Path, sent.Remote) && StaysAt(local, sent))
            return Move(local, sent, view.Path);
        return null;
    }

    /// <summary>What stood here is elsewhere on one side by now, while its counterpart is still here.</summary>
    private string? FollowDeparture(ItemView view)
    {
        if (_edit.Index.Synced.ByPath(view.Path) is not { } last)
            return null;
        var (local, remote) = (_edit.Drive.Workspace, _edit.Drive.Server);
        if (IsOther(view.Workspace, last.Local) && IsSame(view.Server, last.Remote)
            && _edit.Tracker.Local.PathOf(last.Local) is { } place && CanMove(last, place) && remote.Find(place) is null)
            return Move(remote, last, place);
        if (IsOther(view.Server, last.Remote) && IsSame(view.Workspace, last.Local)
            && _edit.Tracker.Remote.PathOf(last.Remote) is { } target && CanMove(last, target) && local.Find(target) is null)
            return Move(local, last, target);
        return null;
    }

    // Nothing can be moved into itself; the new folders are then synced like any others.
    private static bool CanMove(SyncedRecord last, string to) => !RelativePath.IsBeneath(to, last.Path);

    private static bool HasLeft(DriveSide side, string path, FileIdentity identity) => IsOther(side.Find(path), identity);

    private bool StaysAt(DriveSide side, SyncedRecord last)
    {
        if (side.Find(last.Path) is not { } entry || entry.IsFolder != last.IsFolder)
            return false;
        var synced = _edit.Index.Synced;
        var owner = side == _edit.Drive.Server ? synced.ByRemote(entry.Identity) : synced.ByLocal(entry.Identity);
        return owner is null || owner == last;
    }

    private static bool IsSame(FileEntry? entry, FileIdentity identity) => entry is { } found && identity.Matches(found.Identity);

    private static bool IsOther(FileEntry? entry, FileIdentity identity) => identity.IsKnown && !IsSame(entry, identity);

    private string Move(DriveSide side, SyncedRecord last, string to)
    {
        var name = RelativePath.NameOf(to);
        if (!NameRules.CanBeAdded(name))
            throw new IOException($"'{name}' is not a name that every platform accepts.");
        if (side == _edit.Drive.Server)
            _edit.Drive.RequireWritable();
        FolderMaker.Make(_edit, RelativePath.FolderOf(to));
        side.Move(last.Path, to);
        _edit.Index.Move(last.Path, to);
        _edit.Tracker.Reset();
        return to;
    }
}
