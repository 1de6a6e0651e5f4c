using System.Buffers.Binary;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>Homes whose records were written by another version of the service.</summary>
public sealed class EarlierRecordsTests : IDisposable
{
    private const string Id = "11111111-2222-3333-4444-555555555555";

    private const string SecondVersion = """
        {"version":2}
        {"id":"11111111-2222-3333-4444-555555555555","path":"a.txt","local":"1f:7b","remote":"20:ffffffffffffffff","size":7,"hash":"HASH","lockedBy":"someone","later":[1]}
        {"path":"sub","folder":true,"local":"a:1","remote":"b:2"}
        {"path":"sub\\\u00e4.txt","local":"1f:7b","localStamp":[7,-1,2,3,4,1],"remoteStamp":[8,5,6,7,8,0],"hash":"HASH","conflictWith":"b.txt","conflictIsLocal":false}
        {"path":"c.txt","reason":"quota"}

        """;

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public EarlierRecordsTests()
    {
        _drive = _home.AddDrive(locking: true);
        _home.Service.Discover();
        File.Delete(Later);
    }

    public void Dispose() => _home.Dispose();

    private static string Hash => string.Concat(Enumerable.Repeat("0123456789abcdef", 4));

    private string Earlier => Path.Combine(_home.Root, "state", _drive.Id + ".json");

    private string Later => Path.Combine(_home.Root, "state", _drive.Id + ".records");

    [Fact]
    public void EveryFieldOfTheSecondVersionIsRead()
    {
        WriteSecondVersion();

        RequireSample(IndexStore.Load(HomeFolder.Locate(), _drive.Id));
    }

    [Fact]
    public void TheFirstChangeReplacesThem()
    {
        WriteSecondVersion();
        Assert.Equal("someone", LockOf("a.txt"));
        Assert.True(File.Exists(Earlier));
        Assert.False(File.Exists(Later));

        Save(IndexStore.Load(HomeFolder.Locate(), _drive.Id).Clone());

        Assert.False(File.Exists(Earlier));
        IndexStore.ForgetAll();
        RequireSample(IndexStore.Load(HomeFolder.Locate(), _drive.Id));
    }

    [Fact]
    public void ADriveWithThemIsNotTakenForANewOne()
    {
        _drive.PutBoth("a.txt", "content");
        WriteSecondVersion();

        _home.Service.Discover();

        Assert.False(File.Exists(Later));
        Assert.Equal("changed-on-both", _home.Service.GetProperties([_drive.Item("a.txt").Id], ["SyncState"]).Values.Single().Value);
    }

    [Fact]
    public void TheyAreNotReadBesideLaterOnes()
    {
        WriteSecondVersion();
        var later = new DriveIndex();
        later.Failures.Put("c.txt", "later");
        Save(later);
        // As a kill between the two steps leaves them.
        WriteSecondVersion();
        IndexStore.ForgetAll();

        Assert.Equal("later", IndexStore.Load(HomeFolder.Locate(), _drive.Id).Failures.At("c.txt"));
        Save(later);
        Assert.False(File.Exists(Earlier));
    }

    [Fact]
    public void OnlyAFileInTheirPlaceIsRemoved()
    {
        Directory.CreateDirectory(Path.Combine(Earlier, "inner"));

        Save(new DriveIndex());

        Assert.True(Directory.Exists(Path.Combine(Earlier, "inner")));
        Assert.NotNull(IndexStore.Load(HomeFolder.Locate(), _drive.Id));
    }

    [Fact]
    public void ADamagedRecordIsRefusedWithTheRemedy()
    {
        WriteSecondVersion();
        File.AppendAllText(Earlier, "{\"path\":\"b.txt\",\"local\":\"no number\"}\n");

        RequireRefused(Earlier, "Remove that file; no user file is lost");
    }

    [Theory]
    [InlineData("{\"version\":3}\n")]
    [InlineData("{\"version\":99,\"later\":true}")]
    public void AnUnknownVersionInJsonIsRefusedWithTheRemedy(string content)
    {
        File.WriteAllText(Earlier, content);

        RequireRefused(Earlier, "it was written by another version of the service. Use that version, or remove that file; no user file is lost");
    }

    [Fact]
    public void ANewerVersionIsRefusedWithTheRemedy()
    {
        var content = SyncedRecords();
        ++content[RecordFile.Mark.Length];
        BinaryPrimitives.WriteUInt32LittleEndian(content.AsSpan(content.Length - sizeof(uint)), Crc32C.Of(content.AsSpan(0, content.Length - sizeof(uint))));
        File.WriteAllBytes(Later, content);

        RequireRefused(Later, "it was written by another version of the service. Use that version, or remove that file; no user file is lost");
    }

    [Fact]
    public void DamagedRecordsAreRefusedWithTheRemedy()
    {
        var content = SyncedRecords();
        content[content.Length / 2] ^= 1;
        File.WriteAllBytes(Later, content);

        RequireRefused(Later, "it is incomplete or damaged. Remove that file; no user file is lost");
    }

    private byte[] SyncedRecords()
    {
        _drive.PutInWorkspace("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        return File.ReadAllBytes(Later);
    }

    private void WriteSecondVersion() => File.WriteAllText(Earlier, SecondVersion.ReplaceLineEndings("\n").Replace("HASH", Hash));

    private static void RequireSample(DriveIndex index)
    {
        var item = Assert.Single(index.Items.Records);
        var content = new ContentMark(7, ContentHash.Parse(Hash));
        Assert.Equal(
            new ItemRecord
            {
                Key = Guid.Parse(Id),
                Path = "a.txt",
                IsFolder = false,
                Local = new(0x1f, 0x7b),
                Remote = new(0x20, -1),
                Content = content,
                LockedBy = "someone",
            }, item);
        Assert.Equal(2, index.Synced.Count);
        Assert.Equal(new SyncedRecord("sub", IsFolder: true) { Local = new(10, 1), Remote = new(11, 2) }, index.Synced.ByPath("sub"));
        Assert.Equal(
            new SyncedRecord("sub\\ä.txt", IsFolder: false)
            {
                Local = new(0x1f, 0x7b),
                LocalStamp = new(7, new FileTime(-1, 2), new FileTime(3, 4), IsSettled: true),
                RemoteStamp = new(8, new FileTime(5, 6), new FileTime(7, 8), IsSettled: false),
                Hash = content.Hash,
                Conflict = new ConflictMark("b.txt", SideName.Server),
            }, index.Synced.ByPath("sub\\ä.txt"));
        Assert.Equal("quota", index.Failures.At("c.txt"));
    }

    private void Save(DriveIndex index)
    {
        using var held = HomeLock.Acquire(HomeFolder.Locate());
        IndexStore.Save(HomeFolder.Locate(), _drive.Id, index);
    }

    // Nothing is written over what cannot be read.
    private void RequireRefused(string file, string reason)
    {
        var before = File.ReadAllBytes(file);

        var message = Assert.Throws<InvalidDataException>(() => _drive.Sync("")).Message;

        Assert.Contains(file, message);
        Assert.Contains(reason, message);
        Assert.Equal(before, File.ReadAllBytes(file));
        Assert.Single(Directory.GetFiles(Path.Combine(_home.Root, "state")));
    }

    private object? LockOf(string path)
    {
        _drive.PutBoth(path);
        var index = IndexStore.Load(HomeFolder.Locate(), _drive.Id);
        return index.Items.Records.SingleOrDefault(record => record.Path == path)?.LockedBy;
    }
}
