namespace Quorvex.Tessaport.API.Local;

/// <summary>How an item that was named is stored.</summary>
internal static class ItemEntry
{
    [Flags]
    private enum Has
    {
        None = 0,
        Folder = 1,
        Local = 2,
        Remote = 4,
        Content = 8,
        Lock = 16,
    }

    public static void Write(BinaryWriter to, ItemRecord record)
    {
        var has = Has.None;
        if (record.IsFolder)
            has |= Has.Folder;
        if (record.Local.IsKnown)
            has |= Has.Local;
        if (record.Remote.IsKnown)
            has |= Has.Remote;
        if (record.Content is not null)
            has |= Has.Content;
        if (record.LockedBy is not null)
            has |= Has.Lock;
        to.Write7BitEncodedInt((int)has);
        to.Write(record.Key.ToByteArray());
        to.Write(record.Path);
        if (record.Local.IsKnown)
            RecordFields.Write(to, record.Local);
        if (record.Remote.IsKnown)
            RecordFields.Write(to, record.Remote);
        if (record.Content is { } content)
        {
            to.Write7BitEncodedInt64(content.Size);
            RecordFields.Write(to, content.Hash);
        }
        if (record.LockedBy is { } user)
            to.Write(user);
    }

    public static ItemRecord Read(ref RecordReader from)
    {
        var has = (Has)from.Number();
        return new ItemRecord
        {
            IsFolder = (has & Has.Folder) != 0,
            Key = from.Id(),
            Path = from.String(),
            Local = (has & Has.Local) != 0 ? RecordFields.Identity(ref from) : FileIdentity.None,
            Remote = (has & Has.Remote) != 0 ? RecordFields.Identity(ref from) : FileIdentity.None,
            Content = (has & Has.Content) != 0 ? new ContentMark((long)from.Number(), RecordFields.Hash(ref from)) : null,
            LockedBy = (has & Has.Lock) != 0 ? from.String() : null,
        };
    }
}
