namespace Quorvex.Tessaport.API.Local;

/// <summary>All properties, in the order in which they are reported.</summary>
internal static class PropertyCatalog
{
    private static readonly Property[] General =
    [
        new("Name", "Name", PropertyTypes.String, s => s.View.IsRoot ? s.Drive.Name : RelativePath.NameOf(s.View.Path)),
        new("Extension", "Extension", PropertyTypes.String, s => s.IsFile ? Path.GetExtension(s.View.Path) : null),
        new("Size", "Size", PropertyTypes.WholeNumber, s => s.IsFile ? (s.View.Workspace ?? s.View.Server)?.Size : null),
        new("Modified", "Modified", PropertyTypes.Date, s => new UtcTime(s.View.Modified)),
        new("Created", "Created", PropertyTypes.Date, s => s.Created is { } created ? new UtcTime(created) : null),
        new("IsFolder", "Is a folder", PropertyTypes.Boolean, s => s.View.IsFolder),
        new("IsInWorkspace", "Is in the workspace", PropertyTypes.Boolean, s => s.View.Workspace is not null),
        new("IsOnServer", "Is on the server", PropertyTypes.Boolean, s => s.View.Server is not null),
        new("SyncState", "Sync state", PropertyTypes.String, SyncStates.Of),
        new("SyncError", "Reason of the last failure", PropertyTypes.String, SyncStates.ReasonOf),
        new("ConflictOf", "Other version of", PropertyTypes.String, s => Conflicts.OtherOf(s.Drive, s.Synced)),
        new("ConflictFrom", "Version from", PropertyTypes.String, Conflicts.SideOf),
        new("SyncAction", "What the sync did", PropertyTypes.String, s => s.Action) { InId = id => id.Action },
        new("ContentHash", "SHA-256", PropertyTypes.String, s => s.IsFile ? s.TryHash() : null),
    ];

    // These explain why the other items of the drive cannot be read or changed now.
    private static readonly Property[] OfDrives =
    [
        new("Offline", "Is offline", PropertyTypes.Boolean, s => s.View.IsRoot ? s.Drive.Offline : null) { IsKnownOffline = true },
        new("Writable", "Is writable", PropertyTypes.Boolean, s => s.View.IsRoot ? s.Drive.Writable : null) { IsKnownOffline = true },
        new("IgnorePatterns", "Patterns of what is left out", PropertyTypes.String, PatternsOf) { IsKnownOffline = true },
        new("FilesInWorkspace", "Files in the workspace", PropertyTypes.WholeNumber, s => s.TryCountFiles(SideName.Workspace))
        {
            IsKnownOffline = true,
        },
        new("FilesOnServer", "Files on the server", PropertyTypes.WholeNumber, s => s.TryCountFiles(SideName.Server)),
        new("UpkeepError", "What the service could not tidy up", PropertyTypes.String, s => s.UpkeepFailure) { IsKnownOffline = true },
    ];

    private static readonly Property[] Locking =
    [
        new("IsLocked", "Is locked", PropertyTypes.Boolean, s => s.IsFile ? s.LockedBy is not null : null)
        {
            AppliesTo = drive => drive.Locking,
        },
        new("LockedBy", "Locked by", PropertyTypes.String, s => s.LockedBy) { AppliesTo = drive => drive.Locking },
    ];

    // These three are not among the definitions, because reading them means looking at everything in a folder.
    private static readonly Property Pending = new("Pending", "What is not in sync", PropertyTypes.String, PendingItems.Describe);

    private static readonly Property LeftOut = new("LeftOut", "What is left out", PropertyTypes.String, PendingItems.DescribeLeftOut);

    private static readonly Property Plan = new("SyncPlan", "What a sync would do", PropertyTypes.String, SyncPlan.Describe);

    private static readonly Property[] All = [.. General, .. OfDrives, .. Locking, .. CloudIdentifiers.Properties];

    private static readonly Dictionary<string, Property> ById = new[] { Pending, LeftOut, Plan }.Concat(All).ToDictionary(property => property.Id);

    public static IEnumerable<Property> Of(LocalDrive drive) => All.Where(property => property.AppliesTo(drive));

    // A pattern has no line feed in it.
    private static string? PatternsOf(PropertySource source) =>
        source.View.IsRoot && source.Drive.Ignored is { } rules ? string.Join('\n', rules.Patterns) : null;

    public static Property? Find(string? id) => id is null ? null : ById.GetValueOrDefault(id);
}
