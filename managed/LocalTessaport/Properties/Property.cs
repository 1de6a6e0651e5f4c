namespace Quorvex.Tessaport.API.Local;

/// <summary>One property: its names, the drives that have it, and how its value is found (null if an item has none).</summary>
internal sealed record Property(string Id, string DisplayName, PropertyDataType Type, Func<PropertySource, object?> Read)
{
    public Predicate<LocalDrive> AppliesTo { get; init; } = _ => true;

    /// <summary>Whether reading needs the permanent ids of the item and its folder.</summary>
    public bool NeedsIds { get; init; }

    /// <summary>Whether the root of an offline drive has a value.</summary>
    public bool IsKnownOffline { get; init; }

    /// <summary>
    /// The value that the item's id carries, for properties for which the item need not be looked at; null for the others.
    /// </summary>
    public Func<ItemId, object?>? InId { get; init; }

    public PropertyValue ValueOf(DrivePlace place, object value) => new()
    {
        DriveId = place.Drive.Id,
        RelativePath = place.Path,
        PropertyDefinitionId = Id,
        Value = value,
    };

    public PropertyDefinition ToDefinition() => new()
    {
        Id = Id,
        DisplayName = DisplayName,
        DisplayDataType = Type,
        ValueDataType = Type,
    };
}
