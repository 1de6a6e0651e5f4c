using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Reads the format of the second version of the service, one JSON object per line: an item that was named (it has an id), what was
/// synced, or a failure (it has a reason).
/// </summary>
internal static class IndexLines
{
    private const int StampParts = 6;

    public static void Read(ReadOnlyMemory<byte> line, DriveIndex index)
    {
        var fields = new Fields(line.Span);
        if (fields.Reason is not null)
            index.Failures.Put(fields.RequirePath(), fields.Reason);
        else if (fields.Id is { } id)
            index.Items.Put(ItemOf(fields, id));
        else
            index.Synced.Put(SyncedOf(fields));
    }

    private static ItemRecord ItemOf(in Fields fields, Guid id) => new()
    {
        Key = id,
        Path = fields.RequirePath(),
        IsFolder = fields.IsFolder,
        Local = fields.Local,
        Remote = fields.Remote,
        Content = fields.Hash.IsKnown ? new ContentMark(fields.Size, fields.Hash) : null,
        LockedBy = fields.LockedBy,
    };

    private static SyncedRecord SyncedOf(in Fields fields) => new(fields.RequirePath(), fields.IsFolder)
    {
        Local = fields.Local,
        Remote = fields.Remote,
        LocalStamp = fields.LocalStamp,
        RemoteStamp = fields.RemoteStamp,
        Hash = fields.Hash,
        Conflict = fields.ConflictWith is { } name ? new ConflictMark(name, fields.ConflictFrom) : null,
    };

    /// <summary>The members of one line; unknown ones are skipped.</summary>
    private readonly ref struct Fields
    {
        public Fields(ReadOnlySpan<byte> line)
        {
            var reader = new Utf8JsonReader(line);
            reader.Read();
            while (reader.Read() && reader.TokenType == JsonTokenType.PropertyName)
            {
                if (reader.ValueTextEquals("path"))
                    Path = RequireString(ref reader);
                else if (reader.ValueTextEquals("local"))
                    Local = FileIdentity.Parse(RequireString(ref reader));
                else if (reader.ValueTextEquals("remote"))
                    Remote = FileIdentity.Parse(RequireString(ref reader));
                else if (reader.ValueTextEquals("localStamp"))
                    LocalStamp = Stamp(ref reader);
                else if (reader.ValueTextEquals("remoteStamp"))
                    RemoteStamp = Stamp(ref reader);
                else if (reader.ValueTextEquals("hash"))
                    Hash = ContentHash.Parse(RequireString(ref reader));
                else if (reader.ValueTextEquals("folder"))
                    IsFolder = reader.Read() && reader.GetBoolean();
                else if (reader.ValueTextEquals("id"))
                    Id = reader.Read() ? reader.GetGuid() : null;
                else if (reader.ValueTextEquals("size"))
                    Size = reader.Read() ? reader.GetInt64() : 0;
                else if (reader.ValueTextEquals("lockedBy"))
                    LockedBy = RequireString(ref reader);
                else if (reader.ValueTextEquals("conflictWith"))
                    ConflictWith = RequireString(ref reader);
                else if (reader.ValueTextEquals("conflictIsLocal"))
                    ConflictFrom = reader.Read() && reader.GetBoolean() ? SideName.Workspace : SideName.Server;
                else if (reader.ValueTextEquals("reason"))
                    Reason = RequireString(ref reader);
                else
                    reader.Skip();
            }
        }

        public string? Path { get; }
        public bool IsFolder { get; }
        public FileIdentity Local { get; }
        public FileIdentity Remote { get; }
        public VersionStamp LocalStamp { get; }
        public VersionStamp RemoteStamp { get; }
        public ContentHash Hash { get; }
        public Guid? Id { get; }
        public long Size { get; }
        public string? LockedBy { get; }
        public string? Reason { get; }
        public string? ConflictWith { get; }
        public SideName? ConflictFrom { get; }

        public string RequirePath() => Path ?? throw new FormatException("a record has no path");

        private static string RequireString(ref Utf8JsonReader reader) =>
            reader.Read() && reader.GetString() is { } value ? value : throw new FormatException("a string is missing");

        private static VersionStamp Stamp(ref Utf8JsonReader reader)
        {
            Span<long> parts = stackalloc long[StampParts];
            reader.Read();
            foreach (ref var part in parts)
            {
                reader.Read();
                part = reader.GetInt64();
            }
            reader.Read();
            return new VersionStamp(
                parts[0], new FileTime(parts[1], checked((int)parts[2])), new FileTime(parts[3], checked((int)parts[4])), parts[5] != 0);
        }
    }
}
