namespace Quorvex.Tessaport.API.Local;

/// <summary>The identifiers of items in the cloud; derived from the permanent ids, and as permanent.</summary>
internal static class CloudIdentifiers
{
    public static readonly IReadOnlyList<Property> Properties =
    [
        new("SourceObjectId", "Source object id", PropertyTypes.String, OfItem) { AppliesTo = HasSourceObjects, NeedsIds = true },
        new("KeldaProjectId", "Project id", PropertyTypes.String, OfProject) { AppliesTo = HasProjects },
        new("KeldaItemId", "Item id", PropertyTypes.String, OfItem) { AppliesTo = HasProjects, NeedsIds = true },
        new("KeldaParentId", "Parent folder id", PropertyTypes.String, OfParent) { AppliesTo = HasProjects, NeedsIds = true },
    ];

    private static bool HasProjects(LocalDrive drive) => drive.Type is DriveTypes.TrelisDocs or DriveTypes.TrelisTeam;

    private static bool HasSourceObjects(LocalDrive drive) => !HasProjects(drive);

    private static string OfProject(PropertySource source) => "project." + source.Drive.Id.ToString("N");

    // An item that is not on the server yet has no identifier there.
    private static string? OfItem(PropertySource source) =>
        source.View.Server is not null && source.Id is { } id ? Urn(source.Drive, source.View.IsFolder, id) : null;

    private static string? OfParent(PropertySource source) =>
        source.ParentId is { } id ? Urn(source.Drive, isFolder: true, id) : null;

    private static string Urn(LocalDrive drive, bool isFolder, PermanentId id) =>
        $"urn:{Space(drive)}:{(isFolder ? "folder" : "file")}:{id.Token:N}";

    private static string Space(LocalDrive drive) => drive.Type switch
    {
        DriveTypes.TrelisDocs => "trelis.docs",
        DriveTypes.TrelisTeam => "trelis.team",
        DriveTypes.Morrow => "morrow",
        _ => "quorvex.drive",
    };
}
