namespace Quorvex.Tessaport.API.Local;

/// <summary>What the properties of one item are read from.</summary>
internal sealed class PropertySource
{
    public required ItemView View { get; init; }
    public required PermanentId? Id { get; init; }
    public required PermanentId? ParentId { get; init; }
    public required string? LockedBy { get; init; }

    /// <summary>What was last synced at the item's path, if anything was.</summary>
    public required SyncedRecord? Synced { get; init; }

    /// <summary>Why the item could not be done when it was last asked for; null when it could.</summary>
    public required string? Failure { get; init; }

    /// <summary>What the request did in whose result the item was listed; null outside of results.</summary>
    public required string? Action { get; init; }

    public LocalDrive Drive => View.Drive;
    public bool IsFile => !View.IsFolder;
    public DriveSide Side => View.Workspace is not null ? Drive.Workspace : Drive.Server;

    public DateTime? Created => Side.CreationTimeOf(View.Path);

    /// <summary>Null when the file cannot be read now.</summary>
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
