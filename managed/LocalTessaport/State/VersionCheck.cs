namespace Quorvex.Tessaport.API.Local;

/// <summary>How what is on one side now compares with what was last synced.</summary>
internal enum VersionState
{
    Synced,
    Changed,

    /// <summary>Size and time are as synced, but something was done to the file; only its content can tell.</summary>
    Unsure,
}

/// <summary>Compares versions with records.</summary>
internal static class VersionCheck
{
    /// <summary>Compares without reading the file.</summary>
    public static VersionState Compare(FileEntry entry, SyncedRecord? last, SideName side)
    {
        if (last is null || last.IsFolder != entry.IsFolder)
            return VersionState.Changed;
        return Compare(entry, last.StampOn(side), last.IdentityOn(side));
    }

    /// <summary>The same for an entry of the kind that was synced.</summary>
    public static VersionState Compare(in FileEntry entry, in VersionStamp stamp, FileIdentity identity)
    {
        if (entry.Size != stamp.Size || entry.ModifiedTime != stamp.Modified)
            return VersionState.Changed;
        var isTouched = !stamp.IsSettled || entry.ChangeTime != stamp.Changed || entry.Identity != identity;
        return isTouched ? VersionState.Unsure : VersionState.Synced;
    }
}
