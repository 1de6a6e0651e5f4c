#nullable disable

namespace Quorvex.Tessaport.API;

public partial class Item
{
    public Guid DriveId { get; set; }
    public ItemId Id { get; set; }
    public bool IsFolder { get; set; }
    public bool IsInWorkspace { get; set; }
    public bool IsOnServer { get; set; }
    public DateTime LastModifiedDate { get; set; }
    public string Name { get; set; }
    public string RelativePath { get; set; }
    public string WorkspacePath { get; set; }
}
