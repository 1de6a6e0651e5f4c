namespace Quorvex.Tessaport.API.Local;

/// <summary>What a result says about an item, kept small because a result can list a hundred thousand items.</summary>
internal readonly record struct ListedItem(
    LocalDrive Drive, string Path, bool IsFolder, bool IsInWorkspace, bool IsOnServer, DateTime Modified)
{
    public static ListedItem Of(ItemView view) =>
        new(view.Drive, view.Path, view.IsFolder, view.Workspace is not null, view.Server is not null, view.Modified);

    /// <summary>What the request did with the item; null for nothing.</summary>
    public string? Action { get; init; }

    public Item ToItem() => new()
    {
        DriveId = Drive.Id,
        Id = new ItemId { Drive = Drive.Id, Path = Path, Action = Action },
        IsFolder = IsFolder,
        IsInWorkspace = IsInWorkspace,
        IsOnServer = IsOnServer,
        LastModifiedDate = Modified,
        Name = Path.Length == 0 ? Drive.Name : RelativePath.NameOf(Path),
        RelativePath = Path,
        WorkspacePath = Drive.WorkspacePathOf(Path),
    };
}
