namespace Quorvex.Tessaport.API.Local;

/// <summary>What is remembered of one item, so that it is known again wherever it goes.</summary>
internal sealed record ItemRecord : ITrackedRecord<Guid>
{
    /// <summary>The lasting part of the permanent id.</summary>
    public required Guid Key { get; init; }

    /// <summary>Where the item stood when it was last looked at.</summary>
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
