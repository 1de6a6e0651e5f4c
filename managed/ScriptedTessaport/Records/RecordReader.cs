namespace Quorvex.Tessaport.API.Scripted;

/// <summary>Reads records from a script. JSON null is null, and a property that is not named keeps its default value.</summary>
internal static class RecordReader
{
    /// <summary>A number that names one object, or a string that names as many as are asked for.</summary>
    public static ItemId? Id(JsonElement json) => json.ValueKind switch
    {
        JsonValueKind.Null => null,
        JsonValueKind.Number => ItemId.Numbered(json.GetInt32()),
        _ => ItemId.Named(Strings.Required(json)),
    };

    public static Item? Item(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new Item
    {
        DriveId = Get(json, "driveId", Guid),
        Id = Get(json, "id", Id),
        IsFolder = Get(json, "isFolder", Bool),
        IsInWorkspace = Get(json, "isInWorkspace", Bool),
        IsOnServer = Get(json, "isOnServer", Bool),
        LastModifiedDate = Get(json, "lastModifiedDate", Date),
        Name = Get(json, "name", Strings.Read),
        RelativePath = Get(json, "relativePath", Strings.Read),
        WorkspacePath = Get(json, "workspacePath", Strings.Read),
    };

    public static Drive? Drive(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new Drive
    {
        Id = Get(json, "id", Guid),
        Name = Get(json, "name", Strings.Read),
        WorkspaceLocation = Get(json, "workspaceLocation", Strings.Read),
        DriveType = Get(json, "driveType", Strings.Read),
        Root = Get(json, "root", Item),
        DriveCapabilites = Get(json, "capabilities", Capabilities),
    };

    public static CommandResult? CommandResult(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new CommandResult
    {
        IsSuccess = Get(json, "isSuccess", Bool),
        ItemsCreated = Get(json, "itemsCreated", Items),
        ItemsDeleted = Get(json, "itemsDeleted", Items),
        ItemsUpdated = Get(json, "itemsUpdated", Items),
    };

    public static Command? Command(JsonElement json)
    {
        if (json.ValueKind == JsonValueKind.Null)
            return null;
        JsonElement identity = json.GetProperty("command");
        Command command = identity.ValueKind == JsonValueKind.Number
            ? API.Command.Numbered(identity.GetInt32())
            : API.Command.Named(Strings.Required(identity));
        command.Name = Get(json, "name", Strings.Read);
        command.Id = Get(json, "id", Strings.Read);
        command.IsEnabled = Get(json, "isEnabled", Bool);
        command.IsChecked = Get(json, "isChecked", Bool);
        command.IsBeginningOfGroup = Get(json, "isBeginningOfGroup", Bool);
        command.IsDefaultCommand = Get(json, "isDefaultCommand", Bool);
        command.Image = Get(json, "image", Image);
        command.ImageReads = json.TryGetProperty("imageReads", out JsonElement reads) ? reads.GetInt64() : long.MaxValue;
        command.ImageFailure = Get(json, "imageFailure", Failures.Read);
        return command;
    }

    public static PropertyDefinition? PropertyDefinition(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new PropertyDefinition
    {
        Id = Get(json, "id", Strings.Read),
        DisplayName = Get(json, "displayName", Strings.Read),
        DisplayDataType = (PropertyDataType)Get(json, "displayDataType", Int32),
        ValueDataType = (PropertyDataType)Get(json, "valueDataType", Int32),
    };

    public static PropertyValues? PropertyValues(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new PropertyValues
    {
        Values = Get(json, "values", list => ListReader.Read(list, PropertyValue, Generated.PropertyValue)),
    };

    public static PropertyValue? PropertyValue(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new PropertyValue
    {
        DriveId = Get(json, "driveId", Guid),
        RelativePath = Get(json, "relativePath", Strings.Read),
        PropertyDefinitionId = Get(json, "propertyDefinitionId", Strings.Read),
        Value = Get(json, "value", Values.Read),
    };

    public static WorkspacePathToItemResult? WorkspacePathToItemResult(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new WorkspacePathToItemResult
    {
        Item = Get(json, "item", Item),
        WorkspacePath = Get(json, "workspacePath", Strings.Read),
        Result = (Result)Get(json, "result", Int32),
    };

    public static ItemIdToPermanentIdResult? ItemIdToPermanentIdResult(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new ItemIdToPermanentIdResult
    {
        ItemId = Get(json, "itemId", Id),
        PermanentId = Get(json, "permanentId", Strings.Read),
        Result = (Result)Get(json, "result", Int32),
    };

    public static PermanentIdToItemResult? PermanentIdToItemResult(JsonElement json) => json.ValueKind == JsonValueKind.Null ? null : new PermanentIdToItemResult
    {
        Item = Get(json, "item", Item),
        PermanentId = Get(json, "permanentId", Strings.Read),
        Result = (Result)Get(json, "result", Int32),
    };

    public static bool Bool(JsonElement json) => json.GetBoolean();

    /// <summary>{"ticks": since 0001-01-01, "kind": "Utc", "Local" or "Unspecified"}</summary>
    public static DateTime Date(JsonElement json) => new(
        json.GetProperty("ticks").GetInt64(), Enum.Parse<DateTimeKind>(json.GetProperty("kind").GetString()!));

    private static System.Collections.Generic.IEnumerable<Item?>? Items(JsonElement json) =>
        ListReader.Read(json, Item, Generated.Item);

    private static DriveCapabilites? Capabilities(JsonElement json) => json.ValueKind == JsonValueKind.Null
        ? null
        : new DriveCapabilites { Locking = Get(json, "locking", Bool) };

    private static Guid Guid(JsonElement json) => json.GetGuid();

    private static int Int32(JsonElement json) => json.GetInt32();

    /// <summary>Bytes in base 64, or the number of bytes of a long image, of which each is its index modulo 251.</summary>
    private static byte[]? Image(JsonElement json)
    {
        if (json.ValueKind == JsonValueKind.Null)
            return null;
        if (json.ValueKind == JsonValueKind.String)
            return json.GetBytesFromBase64();
        byte[] image = new byte[json.GetInt32()];
        for (int i = 0; i < image.Length; ++i)
            image[i] = (byte)(i % 251);
        return image;
    }

    private static T? Get<T>(JsonElement json, string name, Func<JsonElement, T?> read) =>
        json.TryGetProperty(name, out JsonElement value) ? read(value) : default;
}
