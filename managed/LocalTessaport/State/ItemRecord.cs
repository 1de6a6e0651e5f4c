namespace Quorvex.Tessaport.API.Local;

/// <summary>What is remembered of one item, so that it is recognized after it was renamed or moved.</summary>
internal sealed record ItemRecord : ITrackedRecord<Guid>
{
    /// <summary>The part of the permanent id that identifies the item within its drive.</summary>
    public required Guid Key { get; init; }

    /// <summary>The path of the item when it was last looked at.</summary>
    public required string Path { get; init; }

    public required bool IsFolder { get; init; }
    public FileIdentity Local { get; init; }
    public FileIdentity Remote { get; init; }

    /// <summary>The content when it last passed through the service.</summary>
    public ContentMark? Content { get; init; }

    public string? LockedBy { get; init; }

    public ItemRecord SeenIn(ItemView view) => this with
    {
        Path = view.Path,
        Local = view.Workspace?.Identity ?? Local,
        Remote = view.Server?.Identity ?? Remote,
    };

    public static ItemRecord For(ItemView view) =>
        new ItemRecord { Key = Guid.NewGuid(), Path = view.Path, IsFolder = view.IsFolder }.SeenIn(view);
}

/// <summary>Tells one content from another.</summary>
internal readonly record struct ContentMark(long Size, ContentHash Hash);
