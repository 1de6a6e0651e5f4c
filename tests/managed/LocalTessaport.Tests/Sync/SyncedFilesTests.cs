namespace Quorvex.Tessaport.API.Tests;

/// <summary>The filter that keeps files in sync out of what is read of a folder.</summary>
public sealed class SyncedFilesTests
{
    private static readonly FileEntry Here = Entry(1);
    private static readonly FileEntry There = Entry(2);

    private readonly SyncedFiles _files = Make();
    private readonly SnapshotNode _folder = SnapshotNode.MakeRoot();

    [Fact]
    public void AFileThatIsAsSyncedOnBothSidesNeedsNoNode()
    {
        Assert.True(See(SideName.Workspace, Here));
        Assert.True(See(SideName.Server, There));

        Assert.Empty(Nodes());
    }

    [Fact]
    public void AFileThatIsAsSyncedOnOneSideIsPutBack()
    {
        Assert.True(See(SideName.Workspace, Here));
        Assert.False(See(SideName.Server, There with { Size = 8 }));

        Assert.Equal(Here, Assert.Single(Nodes())[SideName.Workspace]);
    }

    [Fact]
    public void AFileThatChangedInTheWorkspaceIsKeptOnTheServerToo()
    {
        Assert.False(See(SideName.Workspace, Here with { Size = 8 }));
        Assert.False(See(SideName.Server, There));

        Assert.Empty(Nodes());
    }

    [Fact]
    public void ANameThatIsSeenTwiceCountsAsItWasSeenLast()
    {
        Assert.True(See(SideName.Workspace, Here));
        Assert.True(See(SideName.Server, There));
        Assert.True(See(SideName.Server, There));
        Assert.Empty(Nodes());

        Assert.False(See(SideName.Server, There with { Size = 8 }));

        Assert.Single(Nodes());
    }

    [Theory]
    [InlineData(false)]
    [InlineData(true)]
    public void WhatWasSeenOfASideThatCannotBeReadToItsEndIsWithdrawn(bool isServer)
    {
        Assert.True(See(SideName.Workspace, Here));
        if (isServer)
            Assert.True(See(SideName.Server, There));

        _files.Withdraw();

        Assert.Equal(isServer ? 1 : 0, Nodes().Count);
    }

    private static FileEntry Entry(ulong number) => new()
    {
        Kind = EntryKind.File,
        Size = 7,
        ModifiedTime = new FileTime(5, 6),
        ChangeTime = new FileTime(7, 8),
        Identity = new FileIdentity(number, 9),
    };

    private static SyncedFiles Make()
    {
        var index = new DriveIndex();
        index.Synced.Put(SyncedRecord.ForFile("a.txt", new SeenVersion(Here, IsSettled: true), new SeenVersion(There, IsSettled: true), default));
        using var stream = new MemoryStream();
        RecordFile.Write(stream, index);
        var files = new SyncedFiles((StoredRecords)RecordFile.Read(stream.ToArray(), "name").Synced.Stored!, isNoted: null);
        files.Begin(RelativePath.Root);
        return files;
    }

    private bool See(SideName side, in FileEntry entry) => _files.On(side)!.LeavesOut("a.txt", entry);

    private IReadOnlyCollection<SnapshotNode> Nodes()
    {
        _files.PutBack(_folder);
        return _folder.Inner();
    }
}
