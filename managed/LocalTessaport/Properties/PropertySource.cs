namespace Quorvex.Tessaport.API.Local;

/// <summary>What the properties of one item are read from.</summary>
internal sealed class PropertySource
{
    public PropertySource(ItemView view, DriveIndex index)
    {
        View = view;
        Index = index;
        Synced = index.Synced.ByPath(view.Path);
        Failure = index.Failures.At(view.Path);
        LeftOutBy = LeftOut.PatternFor(view);
    }

    public ItemView View { get; }

    /// <summary>What the service remembers of the drive.</summary>
    public DriveIndex Index { get; }

    /// <summary>What was last synced at the item's path, if anything was.</summary>
    public SyncedRecord? Synced { get; }

    /// <summary>The reason of the item's last failure; null if its last request succeeded.</summary>
    public string? Failure { get; }

    public PermanentId? Id { get; init; }
    public PermanentId? ParentId { get; init; }
    public string? LockedBy { get; init; }

    /// <summary>What the request that listed the item did with it; null outside of results.</summary>
    public string? Action { get; init; }

    /// <summary>Why the service could not tidy up the drive; null if it could.</summary>
    public string? UpkeepFailure { get; init; }

    public LocalDrive Drive => View.Drive;
    public bool IsFile => !View.IsFolder;

    /// <summary>The pattern of the drive that leaves out the item; null if none does.</summary>
    public string? LeftOutBy { get; }

    public DriveSide Side => View.Workspace is not null ? Drive.Workspace : Drive.Server;

    public DateTime? Created => View.Exists ? Side.CreationTimeOf(View.Path) : null;

    /// <summary>How many files are on one side of the drive; null for items in it, or if that cannot be read now.</summary>
    public long? TryCountFiles(SideName side)
    {
        if (!View.IsRoot)
            return null;
        try
        {
            return DriveScan.Walk(Drive.Side(side)).LongCount(found => !found.Entry.IsFolder);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return null;
        }
    }

    /// <summary>Null if the file cannot be read now.</summary>
    public string? TryHash()
    {
        try
        {
            return FileContent.Hash(Side.At(View.Path));
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return null;
        }
    }
}
