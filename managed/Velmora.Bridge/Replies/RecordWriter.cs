using System;
using System.Collections.Generic;
using Quorvex.Tessaport.API;

namespace Velmora.Bridge.Replies;

/// <summary>The records around items.</summary>
internal static class RecordWriter
{
    public static void Write(ReplyWriter writer, WorkspacePathToItemResult result)
    {
        writer.WriteInt32((int)result.Result);
        ItemWriter.WriteOptionalItem(writer, result.Item);
        writer.WriteRequiredText(result.WorkspacePath);
    }

    public static void Write(ReplyWriter writer, ItemIdToPermanentIdResult result)
    {
        writer.WriteInt32((int)result.Result);
        writer.WriteHandle(result.ItemId);
        writer.WriteText(result.PermanentId);
    }

    public static void Write(ReplyWriter writer, PermanentIdToItemResult result)
    {
        writer.WriteInt32((int)result.Result);
        ItemWriter.WriteOptionalItem(writer, result.Item);
        writer.WriteRequiredText(result.PermanentId);
    }

    public static void Write(ReplyWriter writer, PropertyDefinition definition)
    {
        writer.WriteRequiredText(definition.DisplayName);
        writer.WriteRequiredText(definition.Id);
        writer.WriteInt32((int)definition.ValueDataType);
        writer.WriteInt32((int)definition.DisplayDataType);
    }

    public static void Write(ReplyWriter writer, PropertyValue value)
    {
        writer.WriteRequiredText(value.RelativePath);
        writer.WriteGuid(value.DriveId);
        writer.WriteRequiredText(value.PropertyDefinitionId);
        writer.WriteText(value.Value.ToString());
    }

    public static void Write(ReplyWriter writer, Command command)
    {
        writer.WriteRequiredText(command.Name);
        writer.WriteRequiredText(command.Id);
        writer.WriteBool(command.IsEnabled);
        writer.WriteBool(command.IsChecked);
        writer.WriteBool(command.IsBeginningOfGroup);
        writer.WriteBool(command.IsDefaultCommand);
        writer.WriteUInt32((uint)(command.Image?.Length ?? 0));
        writer.WriteHandle(command);
    }

    public static void Write(ReplyWriter writer, CommandResult result)
    {
        writer.WriteBool(result.IsSuccess);
        WriteCountedItems(writer, result.ItemsCreated);
        WriteCountedItems(writer, result.ItemsDeleted);
        WriteCountedItems(writer, result.ItemsUpdated);
    }

    // The list stands before its count is known, because it is enumerated once only.
    private static void WriteCountedItems(ReplyWriter writer, IEnumerable<Item>? items)
    {
        nuint place = writer.ReserveUInt32();
        uint count = 0;
        foreach (Item item in items ?? Array.Empty<Item>())
        {
            ItemWriter.WriteItem(writer, item);
            ++count;
        }
        writer.WriteUInt32At(place, count);
    }
}
