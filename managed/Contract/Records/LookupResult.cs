#nullable disable
namespace Quorvex.Tessaport.API;

public partial class WorkspacePathToItemResult
{
    public Item Item { get; set; }
    public string WorkspacePath { get; set; }
    public Result Result { get; set; }
}

public partial class ItemIdToPermanentIdResult
{
    public ItemId ItemId { get; set; }
    public string PermanentId { get; set; }
    public Result Result { get; set; }
}

public partial class PermanentIdToItemResult
{
    public Item Item { get; set; }
    public string PermanentId { get; set; }
    public Result Result { get; set; }
}

/// <summary>The outcome for one key of a batch. Every value but Success is a failure of that key.</summary>
public enum Result : int
{
    Success = 1,
    Offline = 4,
}
