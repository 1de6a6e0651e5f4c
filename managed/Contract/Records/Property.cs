#nullable disable

namespace Quorvex.Tessaport.API;

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
