using System.Buffers.Binary;
using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The file format of a drive's records: a mark, the version, the named items, the failures and, folder by folder, what was synced;
/// at the end the CRC-32C of everything before it. See docs/design.md.
/// </summary>
internal static class RecordFile
{
    public const uint Version = 3;

    private const int VersionSize = sizeof(uint);
    private const int ChecksumSize = sizeof(uint);
    private const int BlockSize = 64 * 1024;

    public static ReadOnlySpan<byte> Mark => "TPRECORD"u8;

    private static int HeaderSize => Mark.Length + VersionSize;

    public static void Write(Stream stream, DriveIndex index)
    {
        var checkedStream = new ChecksumStream(stream);
        using var blocks = new BufferedStream(checkedStream, BlockSize);
        using var to = new BinaryWriter(blocks, Encoding.UTF8, leaveOpen: true);
        to.Write(Mark);
        to.Write(Version);
        WriteItems(to, index.Items);
        WriteFailures(to, index.Failures);
        WriteSynced(to, index.Synced);
        to.Flush();
        Span<byte> checksum = stackalloc byte[ChecksumSize];
        BinaryPrimitives.WriteUInt32LittleEndian(checksum, checkedStream.Checksum);
        stream.Write(checksum);
    }

    /// <param name="content">The file.</param>
    /// <param name="name">Says which file it is to users, should a record turn out to be invalid later.</param>
    /// <exception cref="FormatException">It cannot be read; the message is the reason, without the file's name.</exception>
    public static DriveIndex Read(byte[] content, string name)
    {
        RequireComplete(content);
        var from = new RecordReader(content.AsSpan(0, content.Length - ChecksumSize), HeaderSize);
        var items = new RecordTable<Guid, ItemRecord>(EqualityComparer<Guid>.Default);
        for (var left = from.Count(); left > 0; --left)
            items.Put(ItemEntry.Read(ref from));
        var failures = new FailureTable();
        for (var left = from.Count(); left > 0; --left)
            failures.Put(from.String(), from.String());
        var synced = new StoredRecords(content, name, ref from);
        if (!from.IsAtEnd)
            throw new FormatException(RecordReader.Damaged);
        return new DriveIndex(items, new(RelativePath.Comparer, synced), failures);
    }

    /// <summary>Fails unless a stream begins like such a file; it is at its beginning before and after that.</summary>
    /// <exception cref="FormatException">It does not.</exception>
    public static void RequireBeginning(Stream stream)
    {
        Span<byte> beginning = stackalloc byte[Mark.Length];
        if (stream.ReadAtLeast(beginning, Mark.Length, throwOnEndOfStream: false) < Mark.Length || !beginning.SequenceEqual(Mark))
            throw new FormatException(RecordReader.Damaged);
        stream.Position = 0;
    }

    private static void RequireComplete(ReadOnlySpan<byte> content)
    {
        if (content.Length < HeaderSize + ChecksumSize || !content.StartsWith(Mark))
            throw new FormatException(RecordReader.Damaged);
        var isSound = Crc32C.Of(content[..^ChecksumSize]) == BinaryPrimitives.ReadUInt32LittleEndian(content[^ChecksumSize..]);
        if (BinaryPrimitives.ReadUInt32LittleEndian(content[Mark.Length..]) != Version)
            throw new UnknownVersionException(isSound
                ? "it was written by another version of the service"
                : "it was written by another version of the service, or is damaged");
        if (!isSound)
            throw new FormatException(RecordReader.Damaged);
    }

    private static void WriteItems(BinaryWriter to, RecordTable<Guid, ItemRecord> items)
    {
        to.Write7BitEncodedInt(items.Count);
        foreach (var record in items.Records)
            ItemEntry.Write(to, record);
    }

    private static void WriteFailures(BinaryWriter to, FailureTable failures)
    {
        to.Write7BitEncodedInt(failures.Reasons.Count);
        foreach (var (path, reason) in failures.Reasons)
        {
            to.Write(path);
            to.Write(reason);
        }
    }

    private static void WriteSynced(BinaryWriter to, RecordTable<string, SyncedRecord> synced)
    {
        var folders = ByFolder(synced.Records);
        to.Write7BitEncodedInt(folders.Count);
        var (entries, entry) = (new Block(), new Block());
        foreach (var (folder, records) in folders)
        {
            foreach (var record in records)
            {
                SyncedEntry.Write(entry.Writer, record);
                entries.Writer.Write(RelativePath.NameOf(record.Path));
                entry.MoveTo(entries.Writer);
            }
            to.Write(folder);
            to.Write7BitEncodedInt(records.Count);
            entries.MoveTo(to);
        }
    }

    private static Dictionary<string, List<SyncedRecord>> ByFolder(IEnumerable<SyncedRecord> all)
    {
        var folders = new Dictionary<string, List<SyncedRecord>>(StringComparer.Ordinal);
        var last = RelativePath.Root;
        List<SyncedRecord>? records = null;
        foreach (var record in all)
        {
            // Most records follow others of their folder.
            var folder = record.Path.AsSpan(0, Math.Max(record.Path.LastIndexOf('\\'), 0));
            if (records is null || !folder.SequenceEqual(last))
            {
                last = folder.ToString();
                if (!folders.TryGetValue(last, out records))
                    folders[last] = records = [];
            }
            records.Add(record);
        }
        return folders;
    }

    /// <summary>Something that follows its length.</summary>
    private sealed class Block
    {
        private readonly MemoryStream _content = new();

        public Block() => Writer = new BinaryWriter(_content, Encoding.UTF8);

        public BinaryWriter Writer { get; }

        public void MoveTo(BinaryWriter to)
        {
            var content = _content.GetBuffer().AsSpan(0, (int)_content.Length);
            to.Write7BitEncodedInt(content.Length);
            to.Write(content);
            _content.SetLength(0);
        }
    }
}
