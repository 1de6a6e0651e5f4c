namespace Velmora.Bridge.Conversions;

/// <summary>Writes items and drives.</summary>
internal static unsafe class ItemWriter
{
    private static readonly DateTime Epoch = new(1970, 1, 1);

    // Optimised from the start, because the first listing of a process may well be its longest.
    public static void WriteItem(ReplyWriter writer, Item item)
    {
        Guid driveId = item.DriveId;
        ItemFlags flags = (item.IsFolder ? ItemFlags.Folder : 0) | (item.IsInWorkspace ? ItemFlags.InWorkspace : 0)
            | (item.IsOnServer ? ItemFlags.OnServer : 0);
        long modified = SecondsSinceEpoch(item.LastModifiedDate);
        string? name = item.Name;
        string? relativePath = item.RelativePath;
        string? workspacePath = item.WorkspacePath;
        ItemId id = item.Id;

        int nameLength = name?.Length ?? 0;
        int relativeLength = relativePath?.Length ?? 0;
        int workspaceLength = workspacePath?.Length ?? 0;
        writer.Align(sizeof(long));
        nuint stringSize = ((nuint)nameLength + (nuint)relativeLength + (nuint)workspaceLength) * sizeof(char);
        byte* target = writer.Append((nuint)sizeof(ItemBlock) + ((stringSize + 3) & ~(nuint)3));
        var block = (ItemBlock*)target;
        driveId.TryWriteBytes(new Span<byte>(block->DriveId, 16), true, out _);
        block->LastModified = modified;
        block->NameLength = (uint)nameLength;
        block->RelativePathLength = (uint)relativeLength;
        block->WorkspacePathLength = (uint)workspaceLength;
        block->Flags = flags;
        char* characters = (char*)(target + sizeof(ItemBlock));
        name.AsSpan().CopyTo(new Span<char>(characters, nameLength));
        characters += nameLength;
        relativePath.AsSpan().CopyTo(new Span<char>(characters, relativeLength));
        characters += relativeLength;
        workspacePath.AsSpan().CopyTo(new Span<char>(characters, workspaceLength));
        writer.WriteHandle(id);
    }

    /// <summary>Writes whether there is an item, and then the item.</summary>
    public static void WriteOptionalItem(ReplyWriter writer, Item? item)
    {
        writer.WriteBool(item != null);
        if (item != null)
            WriteItem(writer, item);
    }

    public static void WriteDrive(ReplyWriter writer, Drive drive)
    {
        writer.WriteString(drive.DriveType);
        writer.WriteBool(drive.DriveCapabilites.Locking);
        writer.WriteGuid(drive.Id);
        writer.WriteString(drive.Name);
        writer.WriteString(drive.WorkspaceLocation);
        WriteItem(writer, drive.Root);
    }

    private static long SecondsSinceEpoch(DateTime date) => (long)(date.ToUniversalTime() - Epoch).TotalSeconds;
}
