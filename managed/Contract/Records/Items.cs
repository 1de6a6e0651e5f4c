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

public partial class PropertyDefinition
{
    public string Id { get; set; }
    public string DisplayName { get; set; }
    public PropertyDataType DisplayDataType { get; set; }
    public PropertyDataType ValueDataType { get; set; }
}

public partial class PropertyValue
{
    public Guid DriveId { get; set; }
    public string RelativePath { get; set; }
    public string PropertyDefinitionId { get; set; }
    public object Value { get; set; }
}

public partial class PropertyValues
{
    public IEnumerable<PropertyValue> Values { get; set; }
}

public enum PropertyDataType : int
{
}

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
