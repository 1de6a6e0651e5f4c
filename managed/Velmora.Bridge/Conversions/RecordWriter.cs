namespace Velmora.Bridge.Conversions;

/// <summary>Writes the records other than items and drives, field by field.</summary>
internal static class RecordWriter
{
    public static void Write(ReplyWriter writer, WorkspacePathToItemResult result)
    {
        writer.WriteInt32((int)result.Result);
        ItemWriter.WriteOptionalItem(writer, result.Item);
        writer.WriteRequiredString(result.WorkspacePath);
    }

    public static void Write(ReplyWriter writer, ItemIdToPermanentIdResult result)
    {
        writer.WriteInt32((int)result.Result);
        writer.WriteHandle(result.ItemId);
        writer.WriteString(result.PermanentId);
    }

    public static void Write(ReplyWriter writer, PermanentIdToItemResult result)
    {
        writer.WriteInt32((int)result.Result);
        ItemWriter.WriteOptionalItem(writer, result.Item);
        writer.WriteRequiredString(result.PermanentId);
    }

    public static void Write(ReplyWriter writer, PropertyDefinition definition)
    {
        writer.WriteRequiredString(definition.DisplayName);
        writer.WriteRequiredString(definition.Id);
        writer.WriteInt32((int)definition.ValueDataType);
        writer.WriteInt32((int)definition.DisplayDataType);
    }

    public static void Write(ReplyWriter writer, PropertyValue value)
    {
        writer.WriteRequiredString(value.RelativePath);
        writer.WriteGuid(value.DriveId);
        writer.WriteRequiredString(value.PropertyDefinitionId);
        writer.WriteString(value.Value.ToString());
    }

    public static void Write(ReplyWriter writer, Command command)
    {
        writer.WriteRequiredString(command.Name);
        writer.WriteRequiredString(command.Id);
        writer.WriteBool(command.IsEnabled);
        writer.WriteBool(command.IsChecked);
        writer.WriteBool(command.IsBeginningOfGroup);
        writer.WriteBool(command.IsDefaultCommand);
        writer.WriteUInt32((uint)(command.Image?.Length ?? 0));
        writer.WriteHandle(command);
    }
}
