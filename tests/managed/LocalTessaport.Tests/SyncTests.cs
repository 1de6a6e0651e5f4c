namespace Quorvex.Tessaport.API.Tests;

public sealed class SyncTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public SyncTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AnItemOfOneSideIsCopiedToTheOtherWithItsTime()
    {
        _drive.PutInWorkspace("up/a.txt", "local", minutes: 1);
        _drive.PutOnServer("down/b.txt", "remote", minutes: 2);

        var result = _drive.Sync("");

        Assert.True(result.IsSuccess);
        Assert.Equal(["down/b.txt", "up/a.txt"], _drive.FilesInWorkspace());
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        Assert.Equal(File.GetLastWriteTimeUtc(_drive.InWorkspace("up/a.txt")), File.GetLastWriteTimeUtc(_drive.OnServer("up/a.txt")));
        Assert.Equal(
            ["", "down", @"down\b.txt", "up", @"up\a.txt"],
            result.ItemsUpdated.Select(item => item.RelativePath).Order(StringComparer.Ordinal));
        Assert.All(result.ItemsUpdated, item => Assert.True(item.IsInWorkspace && item.IsOnServer));
    }

    [Fact]
    public void ASyncedItemThatIsAskedForIsListed()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");

        var result = _home.Service.SyncFiles([_drive.Item("a.txt").Id]);

        Assert.Equal("a.txt", Assert.Single(result.ItemsUpdated).Name);
    }

    [Fact]
    public void AChangeOfOneSideGoesToTheOther()
    {
        _drive.PutBoth("a.txt", "old");
        _drive.PutBoth("b.txt", "old");
        _home.Service.Discover();
        _drive.PutInWorkspace("a.txt", "changed here", minutes: 5);
        _drive.PutOnServer("b.txt", "changed there", minutes: -5);

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("changed here", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Equal("changed there", File.ReadAllText(_drive.InWorkspace("b.txt")));
        Assert.Equal(["a.txt", "b.txt"], _drive.FilesOnServer());
    }

    [Theory]
    [InlineData(1, 2, "theirs", "mine", "100100")]
    [InlineData(3, 2, "mine", "theirs", "100200")]
    public void AFileChangedOnBothSidesIsKeptTwice(int local, int remote, string winner, string loser, string time)
    {
        _drive.PutBoth("sub/a.txt", "old");
        _drive.Sync("");
        _drive.PutInWorkspace("sub/a.txt", "mine", local);
        _drive.PutOnServer("sub/a.txt", "theirs", remote);

        var result = _drive.Sync("sub/a.txt");

        var copy = $"sub/a (conflict 2024-05-01 {time}).txt";
        Assert.True(result.IsSuccess);
        Assert.Equal(copy.Replace('/', '\\'), Assert.Single(result.ItemsCreated).RelativePath);
        foreach (var side in new[] { _drive.Workspace, _drive.Server })
        {
            Assert.Equal(winner, File.ReadAllText(Path.Combine(side, "sub/a.txt")));
            Assert.Equal(loser, File.ReadAllText(Path.Combine(side, copy)));
        }
        Assert.Empty(_drive.Sync("").ItemsCreated);
        Assert.Equal(2, _drive.FilesOnServer().Count);
    }

    [Fact]
    public void TheSameChangeOnBothSidesIsNoConflict()
    {
        _drive.PutBoth("a.txt", "old");
        _home.Service.Discover();
        _drive.PutInWorkspace("a.txt", "same", 1);
        _drive.PutOnServer("a.txt", "same", 2);

        Assert.Empty(_drive.Sync("a.txt").ItemsCreated);

        Assert.Equal(["a.txt"], _drive.FilesOnServer());
    }

    [Fact]
    public void ManyConflictsOfOneMomentAreAllKept()
    {
        var minute = 9;
        foreach (var version in new[] { "one", "two", "three" })
        {
            _drive.PutOnServer("a.txt", version, 1);
            _drive.PutInWorkspace("a.txt", "newest", ++minute);
            Assert.True(_drive.Sync("a.txt").IsSuccess);
        }

        var kept = _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))).ToList();

        Assert.Contains("one", kept);
        Assert.Contains("two", kept);
        Assert.Contains("three", kept);
    }

    [Fact]
    public void AFileRemovedByHandComesBack()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");
        _home.Service.Discover();
        File.Delete(_drive.InWorkspace("a.txt"));
        File.Delete(_drive.OnServer("b.txt"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.txt", "b.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["a.txt", "b.txt"], _drive.FilesOnServer());
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void ARenamedFileIsRenamedOnTheOtherSide(bool inWorkspace)
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("sub/x.txt");
        _home.Service.Discover();
        var side = inWorkspace ? _drive.Workspace : _drive.Server;
        File.Move(Path.Combine(side, "a.txt"), Path.Combine(side, "sub/b.txt"));

        var result = _drive.Sync("");

        Assert.True(result.IsSuccess);
        Assert.Equal(["sub/b.txt", "sub/x.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["sub/b.txt", "sub/x.txt"], _drive.FilesOnServer());
        Assert.Contains(@"sub\b.txt", result.ItemsUpdated.Select(item => item.RelativePath));
    }

    [Theory]
    [InlineData("")]
    [InlineData("new")]
    [InlineData("new/deep/2.txt")]
    public void ARenamedFolderIsRenamedWithItsContentsOnTheOtherSide(string asked)
    {
        _drive.PutBoth("old/1.txt", "one");
        _drive.PutBoth("old/deep/2.txt", "two");
        _home.Service.Discover();
        Directory.Move(_drive.InWorkspace("old"), _drive.InWorkspace("new"));
        _drive.PutInWorkspace("new/1.txt", "changed", 3);

        Assert.True(_drive.Sync(asked).IsSuccess);
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["new/1.txt", "new/deep/2.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["new/1.txt", "new/deep/2.txt"], _drive.FilesOnServer());
        Assert.Equal("changed", File.ReadAllText(_drive.OnServer("new/1.txt")));
        Assert.False(Directory.Exists(_drive.InWorkspace("old")));
    }

    [Fact]
    public void ARenamedFileAndANewOneInItsPlaceBothArrive()
    {
        _drive.PutBoth("a.txt", "first");
        _home.Service.Discover();
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        _drive.PutInWorkspace("a.txt", "second", 3);

        Assert.True(_drive.Sync("a.txt").IsSuccess);

        Assert.Equal("second", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Equal("first", File.ReadAllText(_drive.OnServer("b.txt")));
        Assert.Equal(2, _drive.FilesInWorkspace().Count);
    }

    [Fact]
    public void TwoFilesThatSwappedTheirNamesAreSwappedOnTheOtherSide()
    {
        _drive.PutBoth("a.txt", "content of a");
        _drive.PutBoth("b.txt", "b");
        _home.Service.Discover();
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("t"));
        File.Move(_drive.InWorkspace("b.txt"), _drive.InWorkspace("a.txt"));
        File.Move(_drive.InWorkspace("t"), _drive.InWorkspace("b.txt"));
        _home.Service.GetPermanentIds([_drive.Item("a.txt").Id, _drive.Item("b.txt").Id]);

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("b", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Equal("content of a", File.ReadAllText(_drive.OnServer("b.txt")));
        Assert.Equal(["a.txt", "b.txt"], _drive.FilesInWorkspace());
    }

    [Fact]
    public void AFolderMovedIntoANewOneOfItsOldNameLosesNothing()
    {
        _drive.PutBoth("a/1.txt", "one");
        _home.Service.Discover();
        Directory.Move(_drive.InWorkspace("a"), _drive.InWorkspace("t"));
        Directory.CreateDirectory(_drive.InWorkspace("a"));
        Directory.Move(_drive.InWorkspace("t"), _drive.InWorkspace("a/b"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("one", File.ReadAllText(_drive.OnServer("a/b/1.txt")));
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
    }

    [Fact]
    public void AFileHereAndAFolderThereFailAlone()
    {
        _drive.PutInWorkspace("x", "file");
        _drive.PutOnServer("x/inner.txt");
        _drive.PutInWorkspace("y.txt");

        var result = _drive.Sync("");

        Assert.False(result.IsSuccess);
        Assert.Equal(["y.txt"], result.ItemsUpdated.Select(item => item.Name));
        Assert.Equal("file", File.ReadAllText(_drive.InWorkspace("x")));
        Assert.True(File.Exists(_drive.OnServer("x/inner.txt")));
        Assert.Equal("content", File.ReadAllText(_drive.OnServer("y.txt")));
    }

    [Fact]
    public void ANameThatSomePlatformReservesIsListedAndNotSynced()
    {
        Directory.CreateDirectory(LiteralPath.Of(_drive.InWorkspace("con")));
        File.WriteAllText(LiteralPath.Of(_drive.InWorkspace("con/inner.txt")), "mine");
        File.WriteAllText(LiteralPath.Of(_drive.InWorkspace("nul.txt")), "mine");
        _drive.PutInWorkspace("good.txt");

        var result = _drive.Sync("");

        Assert.False(result.IsSuccess);
        Assert.Equal(["good.txt"], result.ItemsUpdated.Select(item => item.Name));
        Assert.Equal(["good.txt"], _drive.FilesOnServer());
        Assert.Equal(["con", "good.txt", "nul.txt"], _home.Service.GetFolderContents(_drive.Root.Id).Select(item => item.Name));
    }

    [Fact]
    public void AReadOnlyDriveIsOnlyDownloaded()
    {
        _drive.PutBoth("a.txt", "old");
        _home.Service.Discover();
        _drive.PutInWorkspace("a.txt", "changed", 3);
        _drive.PutOnServer("b.txt", "down");
        _home.Configure(_drive, "writable", false);

        var result = _drive.Sync("");

        Assert.False(result.IsSuccess);
        Assert.Equal("down", File.ReadAllText(_drive.InWorkspace("b.txt")));
        Assert.Equal("changed", File.ReadAllText(_drive.InWorkspace("a.txt")));
        Assert.Equal("old", File.ReadAllText(_drive.OnServer("a.txt")));
    }

    [Fact]
    public void AMissingItemFailsAndTheOthersAreSynced()
    {
        _drive.PutInWorkspace("a.txt");
        _drive.PutInWorkspace("b.txt");
        var (a, b) = (_drive.Item("a.txt"), _drive.Item("b.txt"));
        File.Delete(_drive.InWorkspace("a.txt"));

        var result = _home.Service.SyncFiles([a.Id, b.Id]);

        Assert.False(result.IsSuccess);
        Assert.Equal("b.txt", Assert.Single(result.ItemsUpdated).Name);
    }

    [Fact]
    public void AClosedFileIsUploadedAndOtherPathsAreIgnored()
    {
        _drive.PutBoth("a.txt", "old");
        _home.Service.Discover();
        _drive.PutInWorkspace("a.txt", "saved", 3);

        _home.Service.FileClosedWithinRunningProcess(4711, _drive.WorkspacePath("a.txt"));
        _home.Service.FileClosedWithinRunningProcess(4711, _drive.WorkspacePath("absent.txt"));
        _home.Service.FileClosedWithinRunningProcess(4711, "/elsewhere.txt");

        Assert.Equal("saved", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Throws<ArgumentException>(() => _home.Service.FileClosedWithinRunningProcess(0, "x"));
        Assert.Throws<ArgumentException>(() => _home.Service.FileClosedWithinRunningProcess(1, ""));
    }

    [Fact]
    public void DeletingRemovesBothSidesCompletely()
    {
        _drive.PutBoth("sub/1.txt");
        _drive.PutInWorkspace("sub/deep/2.txt");
        _drive.PutOnServer("remote.txt");
        _drive.PutBoth("stays.txt");

        var result = _home.Service.DeleteItems([_drive.Item("sub").Id, _drive.Item("sub/1.txt").Id, _drive.Item("remote.txt").Id]);

        Assert.True(result.IsSuccess);
        Assert.Equal(["sub", "1.txt", "remote.txt"], result.ItemsDeleted.Select(item => item.Name));
        Assert.All(result.ItemsDeleted, item => Assert.False(item.IsInWorkspace || item.IsOnServer));
        Assert.Equal(["stays.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["stays.txt"], _drive.FilesOnServer());
        Assert.False(Directory.Exists(_drive.InWorkspace("sub")));
    }

    [Fact]
    public void TheRootAndMissingItemsAreNotDeleted()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");
        var (a, b) = (_drive.Item("a.txt"), _drive.Item("b.txt"));
        _home.Service.DeleteItems([a.Id]);

        var result = _home.Service.DeleteItems([_drive.Root.Id, a.Id, b.Id]);

        Assert.False(result.IsSuccess);
        Assert.Equal("b.txt", Assert.Single(result.ItemsDeleted).Name);
    }
}
