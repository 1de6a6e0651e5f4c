namespace Quorvex.Tessaport.API.Local;

/// <summary>The identifiers under which the cloud knows items; they are made from the permanent ids and last as long.</summary>
internal static class CloudIdentifiers
{
    public static readonly IReadOnlyList<Property> Properties =
    [
        new("SourceObjectId", "Source object id", PropertyTypes.Text, OfItem) { AppliesTo = HasSourceObjects, NeedsIds = true },
        new("KeldaProjectId", "Project id", PropertyTypes.Text, OfProject) { AppliesTo = HasProjects },
        new("KeldaItemId", "Item id", PropertyTypes.Text, OfItem) { AppliesTo = HasProjects, NeedsIds = true },
        new("KeldaParentId", "Parent folder id", PropertyTypes.Text, OfParent) { AppliesTo = HasProjects, NeedsIds = true },
    ];

    private static bool HasProjects(LocalDrive drive) => drive.Type is DriveTypes.TrelisDocs or DriveTypes.TrelisTeam;

    private static bool HasSourceObjects(LocalDrive drive) => !HasProjects(drive);

    private static string OfProject(PropertySource source) => "project." + source.Drive.Id.ToString("N");

    // What is not on the server yet has no name there.
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
