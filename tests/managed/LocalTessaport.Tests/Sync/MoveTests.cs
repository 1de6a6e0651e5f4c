namespace Quorvex.Tessaport.API.Tests;

/// <summary>Renames and moves of one side are done on the other, all of them by one sync.</summary>
public sealed class MoveTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public MoveTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Theory]
    [InlineData(2, true)]
    [InlineData(2, false)]
    [InlineData(3, true)]
    [InlineData(7, false)]
    public void FilesOfOneSizeAndTimeThatChangePlacesAreEqualAfterOneSync(int count, bool inWorkspace)
    {
        for (var i = 0; i < count; ++i)
            _drive.PutBoth($"{i}.txt", $"content {i}");
        Assert.True(_drive.Sync("").IsSuccess);
        var (changed, other) = inWorkspace ? (_drive.Workspace, _drive.Server) : (_drive.Server, _drive.Workspace);
        File.Move(Path.Combine(changed, "0.txt"), Path.Combine(changed, "aside"));
        for (var i = 1; i < count; ++i)
            File.Move(Path.Combine(changed, $"{i}.txt"), Path.Combine(changed, $"{i - 1}.txt"));
        File.Move(Path.Combine(changed, "aside"), Path.Combine(changed, $"{count - 1}.txt"));

        var result = _drive.Sync("");

        Assert.True(result.IsSuccess);
        for (var i = 0; i < count; ++i)
            Assert.Equal($"content {(i + 1) % count}", File.ReadAllText(Path.Combine(other, $"{i}.txt")));
        Assert.Equal(count, _drive.FilesInWorkspace().Count);
        Assert.Equal(count, _drive.FilesOnServer().Count);
        Assert.Equal(count + 1, result.ItemsUpdated.Count());
        Assert.Empty(result.ItemsCreated);
    }

    [Fact]
    public void FilesChangePlacesAlsoWhereTheFileSystemCannotExchangeThem()
    {
        using var limited = new Without("Exchanging");
        PutSwapped();

        Assert.True(_drive.Sync("").IsSuccess);

        AssertSwapped();
        Assert.Equal(["a.txt", "b.txt"], _drive.FilesOnServer());
    }

    [Theory]
    [InlineData("Exchange.Aside")]
    [InlineData("Exchange.Moved")]
    public void AFileSavedWhileTwoOthersChangePlacesInStepsIsKept(string step)
    {
        using var limited = new Without("Exchanging");
        PutSwapped();
        using (var accident = StepAction.At(step, "", _ => SaveIntoGap()))
        {
            _drive.Sync("");
            Assert.True(accident.WasReached);
        }

        Assert.True(_drive.Sync("").IsSuccess);

        var contents = _drive.FilesOnServer().Select(name => File.ReadAllText(_drive.OnServer(name))).ToList();
        Assert.Contains("saved meanwhile", contents);
        Assert.Contains("content of a", contents);
        Assert.Contains("b", contents);
        Assert.Equal(_drive.FilesOnServer(), _drive.FilesInWorkspace());
    }

    [Fact]
    public void FoldersThatChangePlacesTakeTheirPermanentIdsAlong()
    {
        _drive.PutBoth("a/inner.txt", "in a");
        _drive.PutBoth("b/inner.txt", "in b");
        Assert.True(_drive.Sync("").IsSuccess);
        var id = _drive.PermanentId("a/inner.txt");
        Directory.Move(_drive.InWorkspace("a"), _drive.InWorkspace("c"));
        Directory.Move(_drive.InWorkspace("b"), _drive.InWorkspace("a"));
        Directory.Move(_drive.InWorkspace("c"), _drive.InWorkspace("b"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("in a", File.ReadAllText(_drive.OnServer("b/inner.txt")));
        Assert.Equal("in b", File.ReadAllText(_drive.OnServer("a/inner.txt")));
        Assert.Equal(@"b\inner.txt", _drive.PathOf(id));
    }

    [Fact]
    public void AChainOfRenamesIsFollowedFromItsFreeEnd()
    {
        const int count = 200;
        for (var i = 0; i < count; ++i)
            _drive.PutBoth($"{i:D3}.txt", $"content {i}");
        Assert.True(_drive.Sync("").IsSuccess);
        for (var i = count - 1; i >= 0; --i)
            File.Move(_drive.InWorkspace($"{i:D3}.txt"), _drive.InWorkspace($"{i + 1:D3}.txt"));

        var result = _drive.Sync("");

        Assert.True(result.IsSuccess);
        for (var i = 0; i < count; ++i)
            Assert.Equal($"content {i}", File.ReadAllText(_drive.OnServer($"{i + 1:D3}.txt")));
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        Assert.Equal(count, _drive.FilesOnServer().Count);
    }

    [Theory]
    [InlineData("a.txt", "z.txt")]
    [InlineData("z.txt", "a.txt")]
    public void ARenameIsListedWhateverTheOrderOfTheNames(string from, string to)
    {
        _drive.PutBoth(from);
        Assert.True(_drive.Sync("").IsSuccess);
        File.Move(_drive.InWorkspace(from), _drive.InWorkspace(to));

        Assert.Equal(["", to], _drive.Sync("").ItemsUpdated.Select(item => item.RelativePath).Order(StringComparer.Ordinal));
    }

    [Fact]
    public void ARenameOnAReadOnlyDriveIsNotFollowed()
    {
        _drive.PutBoth("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        _home.Configure(_drive, "writable", false);
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));

        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.txt"], _drive.FilesOnServer());
        Assert.Equal(["b.txt"], _drive.FilesInWorkspace());
    }

    [Fact]
    public void ARenameOnTheServerOfAReadOnlyDriveIsFollowed()
    {
        _drive.PutBoth("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        _home.Configure(_drive, "writable", false);
        File.Move(_drive.OnServer("a.txt"), _drive.OnServer("b.txt"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["b.txt"], _drive.FilesInWorkspace());
    }

    [UnixFact]
    public void ARenameToAReservedNameIsNotFollowed()
    {
        _drive.PutBoth("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        File.Move(LiteralPath.Of(_drive.InWorkspace("a.txt")), LiteralPath.Of(_drive.InWorkspace("con.txt")));

        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.txt"], _drive.FilesOnServer());
        Assert.Equal(["con.txt"], _drive.FilesInWorkspace());
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AHardLinkIsNoMove(bool inWorkspace)
    {
        _drive.PutBoth("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        var side = inWorkspace ? _drive.Workspace : _drive.Server;
        HardLink.Make(Path.Combine(side, "a.txt"), Path.Combine(side, "b.txt"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.txt", "b.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["a.txt", "b.txt"], _drive.FilesOnServer());
    }

    [Theory]
    [InlineData("a.txt", "b.txt", true)]
    [InlineData("a.txt", "b.txt", false)]
    [InlineData("b.txt", "a.txt", true)]
    [InlineData("b.txt", "a.txt", false)]
    public void ARenameOfOneNameOfAFileWithTwoIsFollowed(string renamed, string other, bool onItsSide)
    {
        _drive.PutBoth("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        HardLink.Make(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        Assert.True(_drive.Sync("").IsSuccess);
        var side = onItsSide ? _drive.Workspace : _drive.Server;
        File.Move(Path.Combine(side, renamed), Path.Combine(side, "c.txt"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal([other, "c.txt"], _drive.FilesInWorkspace());
        Assert.Equal([other, "c.txt"], _drive.FilesOnServer());
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AFileThatWasRenamedAndEditedIsNoConflict(bool areExchanged)
    {
        _drive.PutBoth("a.txt", "a");
        _drive.PutBoth("b.txt", "b");
        // Long enough for a change to show in the times, so that the files are not read.
        Thread.Sleep(50);
        Assert.True(_drive.Sync("").IsSuccess);
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("c.txt"));
        if (areExchanged)
        {
            File.Move(_drive.InWorkspace("b.txt"), _drive.InWorkspace("a.txt"));
            File.Move(_drive.InWorkspace("c.txt"), _drive.InWorkspace("b.txt"));
            _drive.PutInWorkspace("a.txt", "b, edited", 3);
        }
        var edited = areExchanged ? "b.txt" : "c.txt";
        _drive.PutInWorkspace(edited, "a, edited", 3);

        Assert.Empty(_drive.Sync("").ItemsCreated);

        Assert.Equal("a, edited", File.ReadAllText(_drive.OnServer(edited)));
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        Assert.Equal(2, _drive.FilesOnServer().Count);
    }

    [Fact]
    public void ANewcomerInThePlaceOfARenamedFileIsSyncedWhenItIsClosed()
    {
        _drive.PutBoth("a.txt", "first");
        Assert.True(_drive.Sync("").IsSuccess);
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        _drive.PutInWorkspace("a.txt", "second", 3);

        _home.Service.FileClosedWithinRunningProcess(1, _drive.WorkspacePath("a.txt"));

        Assert.Equal("second", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Equal("first", File.ReadAllText(_drive.OnServer("b.txt")));
    }

    [Fact]
    public void AFileMovedToDifferentPlacesOnBothSidesIsKeptAtBoth()
    {
        _drive.PutBoth("a.txt", "content");
        Assert.True(_drive.Sync("").IsSuccess);
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        File.Move(_drive.OnServer("a.txt"), _drive.OnServer("c.txt"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["b.txt", "c.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["b.txt", "c.txt"], _drive.FilesOnServer());
    }

    [Fact]
    public void ThousandsOfRenamesTakeTimeInProportion()
    {
        var few = TimeOfRenames(200);
        var many = TimeOfRenames(2000);

        Assert.True(many < TimeSpan.FromSeconds(1) + 40 * few, $"200 renames took {few}, 2,000 took {many}.");
    }

    private TimeSpan TimeOfRenames(int count)
    {
        var folder = $"folder of {count}";
        for (var i = 0; i < count; ++i)
            _drive.PutBoth($"{folder}/{i}.txt", "content");
        Assert.True(_drive.Sync("").IsSuccess);
        for (var i = 0; i < count; ++i)
            File.Move(_drive.InWorkspace($"{folder}/{i}.txt"), _drive.InWorkspace($"{folder}/renamed {i}.txt"));
        var watch = System.Diagnostics.Stopwatch.StartNew();
        Assert.True(_drive.Sync(folder).IsSuccess);
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        return watch.Elapsed;
    }

    private void PutSwapped()
    {
        _drive.PutBoth("a.txt", "content of a");
        _drive.PutBoth("b.txt", "b");
        Assert.True(_drive.Sync("").IsSuccess);
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("t"));
        File.Move(_drive.InWorkspace("b.txt"), _drive.InWorkspace("a.txt"));
        File.Move(_drive.InWorkspace("t"), _drive.InWorkspace("b.txt"));
    }

    private void AssertSwapped()
    {
        Assert.Equal("b", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Equal("content of a", File.ReadAllText(_drive.OnServer("b.txt")));
    }

    private void SaveIntoGap()
    {
        var gap = new[] { "a.txt", "b.txt" }.First(name => !File.Exists(_drive.OnServer(name)));
        File.WriteAllText(_drive.OnServer(gap), "saved meanwhile");
    }
}
