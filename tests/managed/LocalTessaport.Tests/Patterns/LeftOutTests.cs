using System.Text.Json;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>What the patterns of a drive leave out is neither copied nor replaced nor deleted.</summary>
public sealed class LeftOutTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public LeftOutTests()
    {
        _drive = _home.AddDrive(name: "Plans");
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    [Fact]
    public void WhatIsLeftOutIsNotCopiedInEitherDirection()
    {
        Ignore("*.tmp", "build/");
        _drive.PutInWorkspace("a.tmp");
        _drive.PutOnServer("b.tmp");
        _drive.PutInWorkspace("build/deep/x.txt");
        _drive.PutOnServer("p/build/y.txt");
        _drive.PutInWorkspace("c.txt");

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.tmp", "build/deep/x.txt", "c.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["b.tmp", "c.txt", "p/build/y.txt"], _drive.FilesOnServer());
        Assert.True(Directory.Exists(_drive.InWorkspace("p")));
        Assert.Equal("[]", Value("", "Pending"));
    }

    [Fact]
    public void TwoVersionsOfAFileThatIsLeftOutStayAsTheyAre()
    {
        Ignore("*.tmp");
        _drive.PutInWorkspace("a.tmp", "mine", 3);
        _drive.PutOnServer("a.tmp", "theirs", 4);

        Assert.True(_drive.Sync("").IsSuccess);

        RequireAre("a.tmp", "mine", "theirs");
    }

    [Fact]
    public void WithoutPatternsEverythingIsSynced()
    {
        Ignore();
        _drive.PutInWorkspace("a.tmp");

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.tmp"], _drive.FilesOnServer());
    }

    [Theory]
    [InlineData("mine", "synced", "mine", "mine")]
    [InlineData("synced", "theirs", "theirs", "theirs")]
    [InlineData(null, "theirs", "theirs", "theirs")]
    [InlineData("mine", null, "mine", "mine")]
    [InlineData(null, "synced", "synced", "synced")]
    public void WhenAPatternIsRemovedTheFileIsComparedWithWhatWasSyncedBefore(string? here, string? there, string thenHere, string thenThere)
    {
        _drive.PutBoth("a.tmp", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        Change(_drive.InWorkspace("a.tmp"), here);
        Change(_drive.OnServer("a.tmp"), there);
        Assert.True(_drive.Sync("").IsSuccess);
        RequireAre("a.tmp", here, there);
        Ignore();

        Assert.True(_drive.Sync("").IsSuccess);

        RequireAre("a.tmp", thenHere, thenThere);
        Assert.Equal(["a.tmp"], _drive.FilesInWorkspace());
    }

    [Fact]
    public void WhenAPatternIsRemovedChangesOfBothSidesAreKept()
    {
        _drive.PutBoth("a.tmp", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        _drive.PutInWorkspace("a.tmp", "mine", 3);
        _drive.PutOnServer("a.tmp", "theirs", 4);
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore();

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["mine", "theirs"], _drive.FilesOnServer().Select(file => File.ReadAllText(_drive.OnServer(file))).Order());
        Assert.Equal(_drive.FilesOnServer(), _drive.FilesInWorkspace());
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AFileThatIsRenamedToWhatIsLeftOutComesBackUnderItsName(bool inWorkspace)
    {
        _drive.PutBoth("a.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        _drive.PutOnServer("a.tmp", "theirs");
        File.Move(Path.Combine(SideOf(inWorkspace), "a.txt"), Path.Combine(SideOf(inWorkspace), inWorkspace ? "a.tmp" : "b.tmp"));

        Assert.True(_drive.Sync("").IsSuccess);

        RequireAre("a.txt", "synced", "synced");
        Assert.Equal(inWorkspace ? ["a.tmp", "a.txt"] : ["a.txt"], _drive.FilesInWorkspace());
        Assert.Equal(inWorkspace ? ["a.tmp", "a.txt"] : ["a.tmp", "a.txt", "b.tmp"], _drive.FilesOnServer());
        Assert.Equal("theirs", File.ReadAllText(_drive.OnServer("a.tmp")));
        RequireNothingMoreToDo();
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AFileThatIsRenamedFromWhatIsLeftOutIsNewAndTheOtherSideKeepsItsOwn(bool inWorkspace)
    {
        _drive.PutBoth("a.tmp", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        File.Move(Path.Combine(SideOf(inWorkspace), "a.tmp"), Path.Combine(SideOf(inWorkspace), "a.txt"));

        Assert.True(_drive.Sync("").IsSuccess);

        RequireAre("a.txt", "synced", "synced");
        Assert.Equal("synced", File.ReadAllText(Path.Combine(SideOf(!inWorkspace), "a.tmp")));
        RequireNothingMoreToDo();
        File.Move(Path.Combine(SideOf(inWorkspace), "a.txt"), Path.Combine(SideOf(inWorkspace), "b.txt"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.False(File.Exists(Path.Combine(SideOf(!inWorkspace), "a.txt")), "The rename of the new file was not followed.");
        RequireAre("b.txt", "synced", "synced");
    }

    [Fact]
    public void AFolderIsRenamedOnTheOtherSideWithWhatIsLeftOutInIt()
    {
        _drive.PutBoth("p/a.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        _drive.PutInWorkspace("p/here.tmp");
        _drive.PutOnServer("p/there.tmp");
        Directory.Move(_drive.InWorkspace("p"), _drive.InWorkspace("q"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["q/a.txt", "q/here.tmp"], _drive.FilesInWorkspace());
        Assert.Equal(["q/a.txt", "q/there.tmp"], _drive.FilesOnServer());
        RequireNothingMoreToDo();
    }

    [Fact]
    public void FilesOfAFolderThatIsRenamedFromWhatIsLeftOutAreSyncedAgain()
    {
        foreach (var file in new[] { "r/here.txt", "r/there.txt", "r/both.txt", "r/neither.txt" })
            _drive.PutBoth(file, "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("r/**");
        _drive.PutInWorkspace("r/here.txt", "newer here", 1);
        _drive.PutOnServer("r/there.txt", "newer there", 1);
        _drive.PutInWorkspace("r/both.txt", "changed here", 1);
        _drive.PutOnServer("r/both.txt", "changed there", 2);
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal("synced", File.ReadAllText(_drive.OnServer("r/here.txt")));
        Directory.Move(_drive.InWorkspace("r"), _drive.InWorkspace("q"));

        Assert.True(_drive.Sync("").IsSuccess);

        string[] files = ["q/both (conflict 2024-05-01 100100).txt", "q/both.txt", "q/here.txt", "q/neither.txt", "q/there.txt"];
        string[] contents = ["changed here", "changed there", "newer here", "synced", "newer there"];
        Assert.Equal(files, _drive.FilesInWorkspace());
        Assert.Equal(files, _drive.FilesOnServer());
        Assert.Equal(contents, files.Select(file => File.ReadAllText(_drive.InWorkspace(file))));
        Assert.Equal(contents, files.Select(file => File.ReadAllText(_drive.OnServer(file))));
        RequireNothingMoreToDo();
    }

    [Fact]
    public void AFolderThatIsRenamedToWhatIsLeftOutComesBack()
    {
        _drive.PutBoth("p/a.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("build/");
        Directory.Move(_drive.InWorkspace("p"), _drive.InWorkspace("build"));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["build/a.txt", "p/a.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["p/a.txt"], _drive.FilesOnServer());
        RequireNothingMoreToDo();
    }

    [Fact]
    public void AFolderOnOneSideAndAFileOnTheOtherAreLeftOutTogether()
    {
        Ignore("build/");
        _drive.PutInWorkspace("build", "a file");
        _drive.PutOnServer("build/x.txt");

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("left-out", Value("build", "SyncState"));
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AFolderThatHoldsWhatIsLeftOutIsNotDeletedAndSaysWhy(bool inWorkspace)
    {
        _drive.PutBoth("p/a.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        var leftOut = Path.Combine(SideOf(inWorkspace), "p", "deep", "x.tmp");
        Directory.CreateDirectory(Path.GetDirectoryName(leftOut)!);
        File.WriteAllText(leftOut, "left out");

        var result = _home.Service.DeleteItems([_drive.Item("p").Id]);

        Assert.False(result.IsSuccess);
        Assert.Empty(result.ItemsDeleted);
        Assert.Equal("left out", File.ReadAllText(leftOut));
        RequireAre("p/a.txt", "synced", "synced");
        Assert.Contains($"'{leftOut}' is left out by the pattern '*.tmp'", Value("p", "SyncError"));
        File.Delete(leftOut);
        Assert.True(_home.Service.DeleteItems([_drive.Item("p").Id]).IsSuccess);
    }

    [Fact]
    public void RequestsForWhatIsLeftOutFailWithTheReason()
    {
        _drive.PutBoth("a.tmp", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp", "build/");
        _drive.PutInWorkspace("a.tmp", "mine", 3);
        var source = _home.MakeSource("a.tmp", "added");

        Assert.False(_drive.Sync("a.tmp").IsSuccess);
        Assert.False(_home.Service.DeleteItems([_drive.Item("a.tmp").Id]).IsSuccess);
        Assert.False(_home.Service.CanAddFiles(_drive.Root.Id, [source]));
        Assert.False(_home.Service.AddFiles(_drive.Root.Id, [source]).IsSuccess);
        Assert.Contains("'build/'", Assert.Throws<IOException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, "p/build/x")).Message);
        _home.Service.FileClosedWithinRunningProcess(1, _drive.InWorkspace("a.tmp"));

        RequireAre("a.tmp", "mine", "synced");
        Assert.Contains("is left out by the pattern '*.tmp' of the drive; remove the pattern first", Value("a.tmp", "SyncError"));
        Assert.Equal("left-out", Value("a.tmp", "SyncState"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Null(Value("a.tmp", "SyncError"));
    }

    [Fact]
    public void WhatIsLeftOutIsListedByItselfWithThePattern()
    {
        Ignore("*.tmp", "build/");
        _drive.PutInWorkspace("a.tmp");
        _drive.PutOnServer("p/build/x.tmp");
        _drive.PutOnServer("p/c.txt");

        var items = JsonDocument.Parse(Value("", "LeftOut")!).RootElement.EnumerateArray().ToList();

        Assert.Equal(["a.tmp", @"p\build"], items.Select(item => item.GetProperty("path").GetString()));
        Assert.Contains("'build/'", items[1].GetProperty("error").GetString());
        Assert.DoesNotContain("tmp", Value("", "Pending"));
        Assert.DoesNotContain("LeftOut", _home.Service.GetPropertyDefinitions(_drive.Id).Select(definition => definition.Id));
    }

    [Fact]
    public void AConflictCopyThatAPatternLeavesOutIsKeptOnBothSidesAndCanBeSettled()
    {
        _drive.PutBoth("a.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*(conflict *");
        _drive.PutInWorkspace("a.txt", "mine", 3);
        _drive.PutOnServer("a.txt", "theirs", 4);

        var result = _drive.Sync("");

        Assert.True(result.IsSuccess);
        var copy = Assert.Single(result.ItemsCreated);
        RequireAre(copy.RelativePath, "mine", "mine");
        RequireAre("a.txt", "theirs", "theirs");
        Assert.Contains("\"conflictOf\":\"a.txt\"", Value("", "Pending"));
        Assert.True(_home.Service.ExecuteCommand(new Command { Id = "use-this-version" }, new CommandContext(IntPtr.Zero, copy.Id, [])).IsSuccess);
        RequireAre("a.txt", "mine", "mine");
        Assert.Equal(["a.txt"], _drive.FilesOnServer());
    }

    [Fact]
    public void APermanentIdFollowsTheFileIntoWhatIsLeftOutAndBack()
    {
        _drive.PutBoth("a.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        Ignore("*.tmp");
        var id = _drive.PermanentId("a.txt");
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("a.tmp"));
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("a.tmp", _drive.PathOf(id));
        Assert.NotEqual(id, _drive.PermanentId("a.txt"));

        File.Move(_drive.InWorkspace("a.tmp"), _drive.InWorkspace("b.txt"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal("b.txt", _drive.PathOf(id));
        Assert.Equal(["a.txt", "b.txt"], _drive.FilesOnServer());
    }

    [UnixFact]
    public void ANameThatCannotBeSyncedIsNoFailureIfItIsLeftOut()
    {
        _drive.PutInWorkspace("aux.txt");
        Assert.False(_drive.Sync("").IsSuccess);
        Ignore("aux.*");

        Assert.True(_drive.Sync("").IsSuccess);
    }

    [Fact]
    public void ANewDriveDoesNotReadWhatIsLeftOut()
    {
        _drive.PutBoth("a.tmp", "same");
        _drive.PutBoth("b.txt", "same");
        Ignore("*.tmp");
        File.Delete(Path.Combine(_home.Root, "state", $"{_drive.Id}.records"));

        _home.Service.Discover();

        var state = File.ReadAllText(Path.Combine(_home.Root, "state", $"{_drive.Id}.records"));
        Assert.Contains("b.txt", state);
        Assert.DoesNotContain("a.tmp", state);
    }

    [Theory]
    [InlineData("\"*.tmp\"", "not an array of strings")]
    [InlineData("[1]", "not an array of strings")]
    [InlineData("[\"[a\"]", "the pattern '[a' of the drive 'Plans' cannot be used: a bracket is not closed")]
    public void APatternThatCannotBeUsedIsAnErrorOfTheDrives(string value, string reason)
    {
        _home.Configure(_drive, "ignore", JsonDocument.Parse(value).RootElement);

        Assert.Contains(reason, Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message);
    }

    private void Ignore(params string[] patterns) => _home.Configure(_drive, "ignore", patterns);

    private string SideOf(bool inWorkspace) => inWorkspace ? _drive.Workspace : _drive.Server;

    private string? Value(string path, string property) =>
        (string?)_home.Service.GetProperties([path.Length == 0 ? _drive.Root.Id : _drive.Item(path).Id], [property]).Values.SingleOrDefault()?.Value;

    private void RequireAre(string path, string? here, string? there)
    {
        Assert.Equal(here, ContentOf(_drive.InWorkspace(path)));
        Assert.Equal(there, ContentOf(_drive.OnServer(path)));
    }

    private void RequireNothingMoreToDo()
    {
        var again = _drive.Sync("");
        Assert.True(again.IsSuccess);
        Assert.Empty(again.ItemsCreated);
        Assert.Single(again.ItemsUpdated);
    }

    private static string? ContentOf(string path) => File.Exists(path) ? File.ReadAllText(path) : null;

    private static void Change(string path, string? content)
    {
        if (content is null)
            File.Delete(path);
        else if (content != ContentOf(path))
            File.WriteAllText(path, content);
    }
}
