namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Numbered records with strings of the usual length, for lists that are too long for a script. Their paths are on a
/// drive that does not exist, because the paths of files that exist are spelled as they are on the disk.
/// </summary>
internal static class Generated
{
    private static readonly Guid DriveId = new("6f1d2c3b-4a59-4867-8776-655443322110");
    private static readonly DateTime FirstDate = new(2024, 5, 17, 8, 30, 0, DateTimeKind.Utc);

    public static Item Item(int number)
    {
        string name = $"Section {number:D7} - elevations.dwg";
        string relativePath = $@"Projects\Northern Station\Drawings\{name}";
        return new Item
        {
            DriveId = DriveId,
            Id = new ItemId(),
            IsFolder = false,
            IsInWorkspace = number % 2 == 0,
            IsOnServer = true,
            LastModifiedDate = FirstDate.AddSeconds(number),
            Name = name,
            RelativePath = relativePath,
            WorkspacePath = $@"W:\Users\quinn\Tessaport\{relativePath}",
        };
    }

    public static Drive Drive(int number)
    {
        string location = $@"W:\Users\quinn\Tessaport\Drive {number}";
        return new Drive
        {
            Id = DriveId,
            Name = $"Drive {number}",
            WorkspaceLocation = location,
            DriveType = "Quorvex.DataSourceType.Drive",
            Root = new Item { DriveId = DriveId, Id = new ItemId(), IsFolder = true, IsInWorkspace = true, IsOnServer = true, LastModifiedDate = FirstDate, Name = $"Drive {number}", RelativePath = "", WorkspacePath = location },
            DriveCapabilites = new DriveCapabilites(),
        };
    }

    public static Command Command(int number) => new() { Name = $"Command {number}", Id = $"command.{number}", IsEnabled = true };

    public static PropertyDefinition PropertyDefinition(int number) =>
        new() { Id = $"Property{number}", DisplayName = $"Property {number}" };

    public static PropertyValue PropertyValue(int number) => new()
    {
        DriveId = DriveId,
        RelativePath = $@"Projects\Northern Station\Drawings\Section {number:D7} - elevations.dwg",
        PropertyDefinitionId = "SourceObjectId",
        Value = $"urn:quorvex.store:fs.file:vf.{number:D12}",
    };

    public static WorkspacePathToItemResult WorkspacePathToItemResult(int number)
    {
        Item item = Item(number);
        return new WorkspacePathToItemResult { Item = item, WorkspacePath = item.WorkspacePath, Result = Result.Success };
    }

    public static ItemIdToPermanentIdResult ItemIdToPermanentIdResult(int number) => new()
    {
        ItemId = new ItemId(),
        PermanentId = PermanentId(number),
        Result = Result.Success,
    };

    public static PermanentIdToItemResult PermanentIdToItemResult(int number) =>
        new() { Item = Item(number), PermanentId = PermanentId(number), Result = Result.Success };

    private static string PermanentId(int number) => $"tessaport:permanent:{number:D20}";
}
