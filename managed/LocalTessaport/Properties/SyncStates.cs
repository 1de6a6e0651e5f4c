namespace Quorvex.Tessaport.API.Local;

/// <summary>How the two sides of an item compare, as one machine-readable word.</summary>
internal static class SyncStates
{
    public const string InSync = "in-sync";
    public const string ChangedHere = "changed-here";
    public const string ChangedOnServer = "changed-on-server";
    public const string ChangedOnBoth = "changed-on-both";
    public const string OnlyHere = "only-here";
    public const string OnlyOnServer = "only-on-server";
    public const string Locked = "locked";
    public const string LeftOut = "left-out";
    public const string Failed = "failed";

    /// <summary>The state of an item; null for the root, which is always on both sides.</summary>
    public static string? Of(PropertySource source)
    {
        if (source.View.IsRoot)
            return null;
        if (source.LeftOutBy is not null || !NameRules.CanBeAdded(RelativePath.NameOf(source.View.Path)))
            return LeftOut;
        var state = Compare(source.View, source.Synced);
        if (state == InSync)
            return source.LockedBy is null ? InSync : Locked;
        return source.Failure is null ? state : Failed;
    }

    /// <summary>Why the last request for an item failed, or why its name cannot be synced; null for other items.</summary>
    public static string? ReasonOf(PropertySource source) => source.Failure ?? WhyNotCopied(source);

    // Null if there is nothing to copy. Versions that differ on both sides may still be found equal.
    private static string? WhyNotCopied(PropertySource source) =>
        source.LeftOutBy is null && Of(source) == LeftOut && Compare(source.View, source.Synced) is not (InSync or ChangedOnBoth)
            ? NameRules.ReasonAgainst(RelativePath.NameOf(source.View.Path))
            : null;

    /// <summary>Whether both sides are as last synced, whatever the name is.</summary>
    public static bool IsEqual(ItemView view, SyncedRecord? synced) => Compare(view, synced) == InSync;

    private static string Compare(ItemView view, SyncedRecord? synced) => view switch
    {
        { Server: null } => OnlyHere,
        { Workspace: null } => OnlyOnServer,
        { SidesDiffer: true } => ChangedOnBoth,
        { IsFolder: true } => InSync,
        { Workspace: { } local, Server: { } remote } => Compare(view, synced, local, remote),
    };

    private static string Compare(ItemView view, SyncedRecord? synced, FileEntry local, FileEntry remote)
    {
        var isLocalSynced = IsSynced(view, synced, local, SideName.Workspace);
        var isRemoteSynced = IsSynced(view, synced, remote, SideName.Server);
        return (isLocalSynced, isRemoteSynced) switch
        {
            (true, true) => InSync,
            (false, true) => ChangedHere,
            (true, false) => ChangedOnServer,
            (false, false) => ChangedOnBoth,
        };
    }

    private static bool IsSynced(ItemView view, SyncedRecord? synced, FileEntry entry, SideName side)
    {
        var state = VersionCheck.Compare(entry, synced, side);
        return state == VersionState.Synced || (state == VersionState.Unsure && HoldsSynced(view, synced!, side));
    }

    private static bool HoldsSynced(ItemView view, SyncedRecord synced, SideName side)
    {
        try
        {
            var file = view.Drive.Side(side).At(view.Path);
            return synced.Hash.IsKnown
                ? ContentHash.Parse(FileContent.Hash(file)) == synced.Hash
                : FileContent.AreEqual(file, view.Drive.Side(side.Opposite()).At(view.Path));
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return false;
        }
    }
}
