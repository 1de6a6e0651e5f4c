namespace Quorvex.Tessaport.API.Local;

/// <summary>How what was synced is stored: the name, the length of the rest, and the rest. So a search decodes nothing but names.</summary>
internal static class SyncedEntry
{
    [Flags]
    private enum Has
    {
        None = 0,
        Folder = 1,
        Local = 2,
        Remote = 4,
        Stamps = 8,

        /// <summary>Size and last-write time are the same on both sides, and stored once.</summary>
        SameStamps = 16,
        LocalSettled = 32,
        RemoteSettled = 64,
        Hash = 128,
        Conflict = 256,
        ConflictSide = 512,
        ConflictFromWorkspace = 1024,
    }

    /// <summary>Writes what follows the length.</summary>
    public static void Write(BinaryWriter to, SyncedRecord record)
    {
        var has = HasOf(record);
        to.Write7BitEncodedInt((int)has);
        if (record.Local.IsKnown)
            RecordFields.Write(to, record.Local);
        if (record.Remote.IsKnown)
            RecordFields.Write(to, record.Remote);
        if ((has & Has.Stamps) != 0)
        {
            WriteContent(to, record.LocalStamp);
            if ((has & Has.SameStamps) == 0)
                WriteContent(to, record.RemoteStamp);
            RecordFields.Write(to, record.LocalStamp.Changed);
            RecordFields.Write(to, record.RemoteStamp.Changed);
        }
        if (record.Hash.IsKnown)
            RecordFields.Write(to, record.Hash);
        if (record.Conflict is { } conflict)
            to.Write(conflict.Name);
    }

    /// <param name="from">At the length.</param>
    /// <param name="path">The path of the record.</param>
    public static SyncedRecord Read(ref RecordReader from, string path)
    {
        var has = ReadSides(ref from, out var local, out var remote, out var localStamp, out var remoteStamp);
        return new SyncedRecord(path, (has & Has.Folder) != 0)
        {
            Local = local,
            Remote = remote,
            LocalStamp = localStamp,
            RemoteStamp = remoteStamp,
            Hash = (has & Has.Hash) != 0 ? RecordFields.Hash(ref from) : ContentHash.Unknown,
            Conflict = (has & Has.Conflict) != 0 ? ReadConflict(ref from, has) : null,
        };
    }

    /// <summary>Whether an entry is the file that was last synced on a side, and is not a copy that was kept in a conflict.</summary>
    /// <param name="from">At the length.</param>
    /// <param name="side">The side.</param>
    /// <param name="entry">What is there now.</param>
    public static bool IsSynced(RecordReader from, SideName side, in FileEntry entry)
    {
        var has = ReadSides(ref from, out var local, out var remote, out var localStamp, out var remoteStamp);
        if (entry.IsFolder || (has & (Has.Folder | Has.Conflict)) != 0)
            return false;
        var state = side == SideName.Workspace
            ? VersionCheck.Compare(entry, localStamp, local)
            : VersionCheck.Compare(entry, remoteStamp, remote);
        return state == VersionState.Synced;
    }

    private static Has ReadSides(
        ref RecordReader from, out FileIdentity local, out FileIdentity remote, out VersionStamp localStamp, out VersionStamp remoteStamp)
    {
        from.Count();
        var has = (Has)from.Number();
        local = (has & Has.Local) != 0 ? RecordFields.Identity(ref from) : FileIdentity.None;
        remote = (has & Has.Remote) != 0 ? RecordFields.Identity(ref from) : FileIdentity.None;
        (localStamp, remoteStamp) = (default, default);
        if ((has & Has.Stamps) != 0)
        {
            var (localSize, localModified) = ((long)from.Number(), RecordFields.Time(ref from));
            var (remoteSize, remoteModified) = (has & Has.SameStamps) != 0
                ? (localSize, localModified)
                : ((long)from.Number(), RecordFields.Time(ref from));
            localStamp = new(localSize, localModified, RecordFields.Time(ref from), (has & Has.LocalSettled) != 0);
            remoteStamp = new(remoteSize, remoteModified, RecordFields.Time(ref from), (has & Has.RemoteSettled) != 0);
        }
        return has;
    }

    /// <param name="from">At the length; afterwards at the next name.</param>
    public static void Skip(ref RecordReader from) => from.Skip(from.Count());

    private static Has HasOf(SyncedRecord record)
    {
        var (local, remote) = (record.LocalStamp, record.RemoteStamp);
        var has = Has.None;
        if (record.IsFolder)
            has |= Has.Folder;
        if (record.Local.IsKnown)
            has |= Has.Local;
        if (record.Remote.IsKnown)
            has |= Has.Remote;
        if (IsSet(local) || IsSet(remote))
            has |= Has.Stamps;
        if (local.Size == remote.Size && local.Modified == remote.Modified)
            has |= Has.SameStamps;
        if (local.IsSettled)
            has |= Has.LocalSettled;
        if (remote.IsSettled)
            has |= Has.RemoteSettled;
        if (record.Hash.IsKnown)
            has |= Has.Hash;
        if (record.Conflict is { } conflict)
        {
            has |= Has.Conflict;
            if (conflict.From is { } side)
                has |= side == SideName.Workspace ? Has.ConflictSide | Has.ConflictFromWorkspace : Has.ConflictSide;
        }
        return has;
    }

    // Folders have none.
    private static bool IsSet(VersionStamp stamp) =>
        stamp.Size != 0 || stamp.Modified.IsKnown || stamp.Changed.IsKnown || stamp.IsSettled;

    private static void WriteContent(BinaryWriter to, VersionStamp stamp)
    {
        to.Write7BitEncodedInt64(stamp.Size);
        RecordFields.Write(to, stamp.Modified);
    }

    private static ConflictMark ReadConflict(ref RecordReader from, Has has)
    {
        SideName? side = (has & Has.ConflictSide) == 0 ? null
            : (has & Has.ConflictFromWorkspace) != 0 ? SideName.Workspace
            : SideName.Server;
        return new ConflictMark(from.String(), side);
    }
}
