using System.Buffers.Binary;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>The file format of a drive's records.</summary>
public sealed class RecordFileTests
{
    private const string Name = "name of the file";

    private static readonly ContentHash Hash = new(1, ulong.MaxValue, 3, 1UL << 63);

    private static readonly VersionStamp Stamp = new(5_000_000_000, new FileTime(1_714_557_600, 123_456_789), new FileTime(1_714_557_601, 0), IsSettled: true);

    private static readonly VersionStamp Extreme = new(long.MaxValue, new FileTime(long.MinValue, int.MinValue), new FileTime(long.MaxValue, int.MaxValue), IsSettled: false);

    public static TheoryData<string> Names() =>
    [
        "a", "a b.txt", " ", "ä€.txt", "\U0001F4C4", "\u0001\t\u001f", "e\u0301", "\uFFFD", "{", new string('n', 255), new string('€', 3000),
        string.Concat(Enumerable.Repeat("\U0001F4C4", 120)),
    ];

    [Theory]
    [MemberData(nameof(Names))]
    public void EveryFieldOfWhatWasSyncedIsReadAsItWasWritten(string name)
    {
        foreach (var folder in new[] { "", "sub\\", "sub\\" + name + "\\" })
        {
            var path = folder + name;
            RequireKept(new SyncedRecord(path, IsFolder: false));
            RequireKept(new SyncedRecord(path, IsFolder: true) { Local = new FileIdentity(1, -1), Remote = new FileIdentity(ulong.MaxValue, long.MinValue) });
            RequireKept(new SyncedRecord(path, IsFolder: false) { Remote = new FileIdentity(7, 8), LocalStamp = Stamp, RemoteStamp = Stamp });
            RequireKept(new SyncedRecord(path, IsFolder: false) { LocalStamp = Stamp, RemoteStamp = Stamp with { Size = 1, IsSettled = false } });
            RequireKept(new SyncedRecord(path, IsFolder: false) { LocalStamp = Extreme, RemoteStamp = Stamp, Hash = Hash });
            RequireKept(new SyncedRecord(path, IsFolder: false) { RemoteStamp = Extreme with { IsSettled = true } });
            RequireKept(new SyncedRecord(path, IsFolder: true) { LocalStamp = Extreme with { Changed = default }, Hash = Hash });
            foreach (var side in new SideName?[] { null, SideName.Workspace, SideName.Server })
                RequireKept(new SyncedRecord(path, IsFolder: false) { Hash = Hash, Conflict = new ConflictMark(name, side) });
        }
    }

    [Theory]
    [MemberData(nameof(Names))]
    public void EveryFieldOfANamedItemIsReadAsItWasWritten(string name)
    {
        var id = Guid.Parse("00112233-4455-6677-8899-aabbccddeeff");
        ItemRecord[] records =
        [
            new() { Key = id, Path = name, IsFolder = false },
            new() { Key = default, Path = "sub\\" + name, IsFolder = true, Local = new FileIdentity(1, 2), LockedBy = "" },
            new() { Key = Guid.NewGuid(), Path = name, IsFolder = false, Remote = new FileIdentity(ulong.MaxValue, -5), LockedBy = name },
            new() { Key = Guid.NewGuid(), Path = name, IsFolder = false, Content = new ContentMark(0, Hash) },
            new() { Key = Guid.NewGuid(), Path = name, IsFolder = false, Content = new ContentMark(long.MaxValue, default) },
        ];
        var index = new DriveIndex();
        Array.ForEach(records, index.Items.Put);

        Assert.Equal(records, Reread(index).Items.Records);
    }

    [Theory]
    [MemberData(nameof(Names))]
    public void FailuresAreReadAsTheyWereWritten(string name)
    {
        var index = new DriveIndex();
        index.Failures.Put(name, "");
        index.Failures.Put("sub\\" + name, "reason " + name);

        Assert.Equal(index.Failures.Reasons, Reread(index).Failures.Reasons);
    }

    [Fact]
    public void NoRecordsAreReadAsNone()
    {
        var index = Reread(new DriveIndex());

        Assert.Empty(index.Items.Records);
        Assert.Empty(index.Synced.Records);
        Assert.Equal(0, index.Synced.Count);
        Assert.Empty(index.Failures.Reasons);
        Assert.Null(index.Synced.ByPath("a"));
        Assert.Null(index.Synced.ByPath(""));
    }

    [Fact]
    public void EachOfManyRecordsIsFoundByItsPath()
    {
        var index = new DriveIndex();
        var paths = Enumerable.Range(0, 3000).Select(i => $"folder {i % 7}\\sub {i % 3}\\{i}.txt").Concat(["a", "b", "folder 1", "folder 1\\sub 2"]).ToList();
        foreach (var (path, i) in paths.Select((path, i) => (path, i)))
            index.Synced.Put(new SyncedRecord(path, IsFolder: false) { LocalStamp = Stamp with { Size = i } });

        var read = Reread(index).Synced;

        Assert.Equal(paths.Count, read.Count);
        foreach (var (path, i) in paths.Select((path, i) => (path, i)))
        {
            Assert.Equal(i, read.ByPath(path)?.LocalStamp.Size);
            Assert.Equal(path, read.ByPath(path)?.Path);
            Assert.Null(read.ByPath(path + "x"));
            Assert.Null(read.ByPath("x\\" + path));
        }
        Assert.Equal(index.Synced.Records.ToHashSet(), read.Records.ToHashSet());
    }

    [Fact]
    public void UpperAndLowerCaseAreTheSameWhereTheyAreInPaths()
    {
        var index = new DriveIndex();
        index.Synced.Put(new SyncedRecord("Sub\\A.txt", IsFolder: false) { LocalStamp = Stamp });
        index.Synced.Put(new SyncedRecord("sUB\\b.txt", IsFolder: false) { LocalStamp = Stamp });

        var read = Reread(index).Synced;

        Assert.Equal("Sub\\A.txt", read.ByPath("Sub\\A.txt")?.Path);
        Assert.Equal("sUB\\b.txt", read.ByPath("sUB\\b.txt")?.Path);
        var isSame = RelativePath.Comparer.Equals("a", "A");
        Assert.Equal(isSame ? "Sub\\A.txt" : null, read.ByPath("sub\\a.TXT")?.Path);
        Assert.Equal(isSame ? "sUB\\b.txt" : null, read.ByPath("sub\\B.txt")?.Path);
    }

    [Fact]
    public void RecordsThatWereReadCanBeChanged()
    {
        var index = new DriveIndex();
        foreach (var path in new[] { "a", "sub", "sub\\b", "sub\\c" })
            index.Synced.Put(new SyncedRecord(path, path == "sub") { Local = new FileIdentity((ulong)path.Length + path[^1], 1) });
        var saved = Reread(index);
        var changed = saved.Clone();
        changed.Synced.Put(saved.Synced.ByPath("a")!);
        Assert.False(changed.IsChanged);
        var known = changed.Synced.ByPath("sub\\b")!;

        changed.Move(("sub", "new"));
        changed.Synced.Remove(changed.Synced.ByPath("new\\c")!);

        Assert.True(changed.IsChanged);
        Assert.Equal(["a", "new", "new\\b"], changed.Synced.Records.Select(record => record.Path).Order(StringComparer.Ordinal));
        Assert.Equal("new\\b", changed.Synced.ByIdentity(SideName.Workspace, known.Local)?.Path);
        Assert.Equal(["a", "sub", "sub\\b", "sub\\c"], saved.Synced.Records.Select(record => record.Path).Order(StringComparer.Ordinal));
        Assert.Equal(["a", "new", "new\\b"], Reread(changed).Synced.Records.Select(record => record.Path).Order(StringComparer.Ordinal));
    }

    [Fact]
    public void AFileThatEndsTooEarlyIsRefused()
    {
        var content = ContentOf(Sample());

        for (var length = 0; length < content.Length; ++length)
            RequireRefused(content[..length], $"{length} bytes");
        RequireRefused([.. content, 0], "a byte more");
    }

    [Fact]
    public void AChangedBitIsNoticed()
    {
        var content = ContentOf(Sample());

        for (var position = 0; position < 8 * content.Length; ++position)
        {
            var damaged = (byte[])content.Clone();
            damaged[position / 8] ^= (byte)(1 << (position % 8));
            RequireRefused(damaged, $"bit {position}");
        }
    }

    [Fact]
    public void ContentThatOnlyItsChecksumConfirmsIsRefusedOrReadToItsEnd()
    {
        var content = ContentOf(Sample());
        var refused = 0;
        for (var position = RecordFile.Mark.Length + sizeof(uint); position < content.Length - sizeof(uint); ++position)
        {
            foreach (var value in new byte[] { 0, 0x7f, 0x80, 0xff })
            {
                var invented = (byte[])content.Clone();
                invented[position] = value;
                try
                {
                    var index = RecordFile.Read(WithChecksum(invented), Name);
                    _ = index.Synced.Records.Count() + index.Items.Records.Count();
                    _ = index.Synced.ByPath("sub\\b.txt");
                }
                catch (FormatException)
                {
                    ++refused;
                }
                catch (InvalidDataException e)
                {
                    Assert.Contains(Name, e.Message);
                    ++refused;
                }
            }
        }
        Assert.True(refused > 100);
    }

    [Fact]
    public void ANewerVersionIsRefusedAsSuch()
    {
        var content = ContentOf(Sample());
        content[RecordFile.Mark.Length] = (byte)(RecordFile.Version + 1);

        var message = Assert.Throws<UnknownVersionException>(() => RecordFile.Read(WithChecksum(content), Name)).Message;

        Assert.Equal("it was written by another version of the service", message);
    }

    private static DriveIndex Sample()
    {
        var index = new DriveIndex();
        index.Items.Put(new() { Key = Guid.NewGuid(), Path = "a.txt", IsFolder = false, Local = new FileIdentity(300, 4), LockedBy = "someone" });
        index.Failures.Put("sub", "reason");
        index.Synced.Put(new SyncedRecord("a.txt", IsFolder: false) { Local = new FileIdentity(300, 4), LocalStamp = Stamp, RemoteStamp = Extreme, Hash = Hash });
        index.Synced.Put(new SyncedRecord("sub", IsFolder: true));
        index.Synced.Put(new SyncedRecord("sub\\b.txt", IsFolder: false) { Conflict = new ConflictMark("c.txt", SideName.Server) });
        return index;
    }

    private static byte[] ContentOf(DriveIndex index)
    {
        using var stream = new MemoryStream();
        RecordFile.Write(stream, index);
        return stream.ToArray();
    }

    private static DriveIndex Reread(DriveIndex index) => RecordFile.Read(ContentOf(index), Name);

    private static byte[] WithChecksum(byte[] content)
    {
        var sum = Crc32C.Of(content.AsSpan(0, content.Length - sizeof(uint)));
        BinaryPrimitives.WriteUInt32LittleEndian(content.AsSpan(content.Length - sizeof(uint)), sum);
        return content;
    }

    private static void RequireKept(SyncedRecord record)
    {
        var index = new DriveIndex();
        index.Synced.Put(record);
        var read = Reread(index).Synced;

        Assert.Equal(record, read.ByPath(record.Path));
        Assert.Equal(record, Assert.Single(read.Records));
    }

    private static void RequireRefused(byte[] content, string what)
    {
        var thrown = Record.Exception(() => RecordFile.Read(content, Name));
        Assert.True(thrown is FormatException, $"{what}: {thrown}");
    }
}
