using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What is remembered of one item between requests and restarts.</summary>
internal sealed record ItemRecord
{
    /// <summary>The lasting part of the permanent id.</summary>
    public required Guid Token { get; init; }

    /// <summary>Where the item stood when it was last looked at.</summary>
    public required string Path { get; init; }

    public required bool IsFolder { get; init; }
    public FileIdentity Workspace { get; init; }
    public FileIdentity Server { get; init; }

    /// <summary>Both sides as they were when they were last equal; null for what was never synced.</summary>
    public SyncedVersion? Synced { get; init; }

    /// <summary>Of the content when it last passed through the service, as hexadecimal text.</summary>
    public string? Hash { get; init; }

    public string? LockedBy { get; init; }

    public ItemRecord SeenIn(ItemView view) => this with
    {
        Path = view.Path,
        Workspace = view.Workspace?.Identity ?? Workspace,
        Server = view.Server?.Identity ?? Server,
    };

    public static ItemRecord For(ItemView view) =>
        new ItemRecord { Token = Guid.NewGuid(), Path = view.Path, IsFolder = view.IsFolder }.SeenIn(view);
}

/// <summary>Tells a file's version on each side by size and time.</summary>
internal readonly record struct SyncedVersion(long LocalTime, long LocalSize, long RemoteTime, long RemoteSize)
{
    public SyncedVersion(FileEntry local, FileEntry remote)
        : this(local.Modified.Ticks, local.Size, remote.Modified.Ticks, remote.Size)
    {
    }

    public bool IsLocal(FileEntry entry) => entry.Modified.Ticks == LocalTime && entry.Size == LocalSize;

    public bool IsRemote(FileEntry entry) => entry.Modified.Ticks == RemoteTime && entry.Size == RemoteSize;
}
