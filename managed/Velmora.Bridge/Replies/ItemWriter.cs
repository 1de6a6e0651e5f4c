using System;
using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;

namespace Velmora.Bridge.Replies;

/// <summary>Items and drives. An item has a fixed block, so that a listing is read without looking at every field's length twice.</summary>
internal static unsafe class ItemWriter
{
    // Drive id 16, date 8, lengths of the three texts 4 each, flags 4.
    private const int FixedSize = 40;

    private const uint FolderFlag = 1;
    private const uint InWorkspaceFlag = 2;
    private const uint OnServerFlag = 4;

    private static readonly DateTime epoch = new(1970, 1, 1);

    // Compiled at its best from the start: the first listing of a process is as likely to be the longest as any.
    [MethodImpl(MethodImplOptions.AggressiveOptimization)]
    public static void WriteItem(ReplyWriter writer, Item item)
    {
        Guid driveId = item.DriveId;
        uint flags = (item.IsFolder ? FolderFlag : 0) | (item.IsInWorkspace ? InWorkspaceFlag : 0)
            | (item.IsOnServer ? OnServerFlag : 0);
        long modified = SecondsSinceEpoch(item.LastModifiedDate);
        string? name = item.Name;
        string? relativePath = item.RelativePath;
        string? workspacePath = item.WorkspacePath;
        ItemId id = item.Id;

        int nameLength = name?.Length ?? 0;
        int relativeLength = relativePath?.Length ?? 0;
        int workspaceLength = workspacePath?.Length ?? 0;
        writer.Align(sizeof(long));
        nuint textSize = ((nuint)nameLength + (nuint)relativeLength + (nuint)workspaceLength) * sizeof(char);
        byte* target = writer.Append(FixedSize + ((textSize + 3) & ~(nuint)3));
        driveId.TryWriteBytes(new Span<byte>(target, 16), true, out _);
        *(long*)(target + 16) = modified;
        *(int*)(target + 24) = nameLength;
        *(int*)(target + 28) = relativeLength;
        *(int*)(target + 32) = workspaceLength;
        *(uint*)(target + 36) = flags;
        char* text = (char*)(target + FixedSize);
        name.AsSpan().CopyTo(new Span<char>(text, nameLength));
        text += nameLength;
        relativePath.AsSpan().CopyTo(new Span<char>(text, relativeLength));
        text += relativeLength;
        workspacePath.AsSpan().CopyTo(new Span<char>(text, workspaceLength));
        writer.WriteHandle(id);
    }

    /// <summary>An item that may be missing: whether there is one, and then the item.</summary>
    public static void WriteOptionalItem(ReplyWriter writer, Item? item)
    {
        writer.WriteBool(item != null);
        if (item != null)
            WriteItem(writer, item);
    }

    public static void WriteDrive(ReplyWriter writer, Drive drive)
    {
        writer.WriteText(drive.DriveType);
        writer.WriteBool(drive.DriveCapabilites.Locking);
        writer.WriteGuid(drive.Id);
        writer.WriteText(drive.Name);
        writer.WriteText(drive.WorkspaceLocation);
        WriteItem(writer, drive.Root);
    }

    private static long SecondsSinceEpoch(DateTime date) => (long)(date.ToUniversalTime() - epoch).TotalSeconds;
}
