namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// What the service remembers of a drive: after it noted that both sides are equal, a change of one side is no conflict.
/// </summary>
public sealed class RecordTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public RecordTests()
    {
        _drive = _home.AddDrive(locking: true);
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    private string StateFile => Path.Combine(_home.Root, "state", _drive.Id + ".records");

    [Fact]
    public void EditsOfOneSideAfterAnotherMakeNoConflict()
    {
        _drive.PutInWorkspace("a.txt", "1");
        RequireNoConflict();
        _drive.PutOnServer("a.txt", "22", 1);
        RequireNoConflict();
        _drive.PutInWorkspace("a.txt", "333", 2);
        RequireNoConflict();

        Assert.Equal("333", File.ReadAllText(_drive.OnServer("a.txt")));
    }

    [Fact]
    public void AnEditAfterAFileWasAddedMakesNoConflict()
    {
        _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "1")]);
        _drive.PutOnServer("a.txt", "22", 1);

        RequireNoConflict();

        Assert.Equal("22", File.ReadAllText(_drive.InWorkspace("a.txt")));
    }

    [Fact]
    public void AnEditAfterEqualVersionsWereFoundMakesNoConflict()
    {
        _drive.PutInWorkspace("a.txt", "same", 1);
        _drive.PutOnServer("a.txt", "same", 2);
        RequireNoConflict();
        _drive.PutOnServer("a.txt", "edited", 3);

        RequireNoConflict();

        Assert.Equal("edited", File.ReadAllText(_drive.InWorkspace("a.txt")));
    }

    [Fact]
    public void AnEditAfterAFileWasClosedMakesNoConflict()
    {
        _drive.PutInWorkspace("a.txt", "1");
        RequireNoConflict();
        _drive.PutInWorkspace("a.txt", "22", 1);
        _home.Service.FileClosedWithinRunningProcess(1, _drive.WorkspacePath("a.txt"));
        _drive.PutOnServer("a.txt", "333", 2);

        RequireNoConflict();

        Assert.Equal("333", File.ReadAllText(_drive.InWorkspace("a.txt")));
    }

    [Fact]
    public void OfVersionsWithTheSameTimeTheOneInTheWorkspaceKeepsTheName()
    {
        _drive.PutInWorkspace("a.txt", "mine", 1);
        _drive.PutOnServer("a.txt", "theirs", 1);

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("mine", File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.Equal("theirs", File.ReadAllText(_drive.InWorkspace("a (conflict 2024-05-01 100100).txt")));
    }

    [Fact]
    public void TheNameOfAConflictCopyIsShortenedByEntireCharacters()
    {
        var name = string.Concat(Enumerable.Repeat("\U0001F4C4", 62)) + ".tx";
        _drive.PutInWorkspace(name, "mine", 1);
        _drive.PutOnServer(name, "theirs", 2);

        var copy = Assert.Single(_drive.Sync("").ItemsCreated).Name;

        Assert.True(System.Text.Encoding.UTF8.GetByteCount(copy) <= 255);
        Assert.StartsWith("\U0001F4C4", copy);
        Assert.Contains("\U0001F4C4 (conflict", copy);
        Assert.DoesNotContain('\uFFFD', copy);
        Assert.Equal("mine", File.ReadAllText(_drive.OnServer(copy)));
    }

    [Fact]
    public void UnsavedRecordsAreNotHandedOut()
    {
        var states = "";
        using var look = StepAction.At("Copy.Opened", "b.txt", _ => states = StateOf("a.txt"));

        _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt"), _home.MakeSource("b.txt")]);

        Assert.True(look.WasReached);
        Assert.Equal("changed-on-both", states);
        Assert.Equal("in-sync", StateOf("a.txt"));
    }

    [Fact]
    public void RecordsOfTheFirstVersionAreRead()
    {
        _drive.PutBoth("a.txt", "content");
        _drive.PutBoth("sub/b.txt", "content");
        var ticks = new DateTime(2024, 5, 1, 10, 0, 0, DateTimeKind.Utc).Ticks;
        File.Delete(StateFile);
        var earlier = Path.ChangeExtension(StateFile, ".json");
        File.WriteAllText(earlier, $$"""
            {"version":1,"items":[{"id":"11111111-2222-3333-4444-555555555555","path":"a.txt","lockedBy":"someone"}],
            "synced":[{"path":"a.txt","stamps":[{{ticks}},7,{{ticks}},7]},{"path":"sub","folder":true,"stamps":[0,0,0,0]}]}
            """.ReplaceLineEndings(""));

        Assert.EndsWith("11111111222233334444555555555555", _drive.PermanentId("a.txt"));
        RequireNoConflict();
        _drive.PutOnServer("a.txt", "edited", 3);
        RequireNoConflict();
        Assert.Equal("edited", File.ReadAllText(_drive.InWorkspace("a.txt")));
        Assert.False(File.Exists(earlier));
        Assert.Equal("someone", _home.Service.GetProperties([_drive.Item("a.txt").Id], ["LockedBy"]).Values.Single().Value);
    }

    [Fact]
    public void AFolderIntoWhichALockedFileWasMovedIsNotDeleted()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("sub/b.txt");
        Run("lock", "a.txt");
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("sub/a.txt"));
        File.Move(_drive.OnServer("a.txt"), _drive.OnServer("sub/a.txt"));

        Assert.False(_home.Service.DeleteItems([_drive.Item("sub").Id]).IsSuccess);

        Assert.True(File.Exists(_drive.OnServer("sub/a.txt")));
    }

    [Fact]
    public void ALockOfAnotherUserIsNotTakenOver()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");
        Run("lock", "a.txt");
        var index = IndexStore.Load(HomeFolder.Locate(), _drive.Id).Clone();
        index.Items.Put(index.Items.Records.Single() with { LockedBy = "someone else" });
        IndexStore.Save(HomeFolder.Locate(), _drive.Id, index);

        Run("lock", "a.txt", "b.txt");

        Assert.Equal(
            ["someone else", Environment.UserName],
            _home.Service.GetProperties([_drive.Item("a.txt").Id, _drive.Item("b.txt").Id], ["LockedBy"]).Values.Select(value => value.Value));
    }

    [Fact]
    public void AnIdDoesNotLeadToAnotherNamedItemAtTheSamePath()
    {
        _drive.PutBoth("a.txt", "first");
        _drive.PutBoth("b.txt", "second");
        var (first, second) = (_drive.PermanentId("a.txt"), _drive.PermanentId("b.txt"));
        foreach (var side in new[] { _drive.Workspace, _drive.Server })
            File.Move(Path.Combine(side, "b.txt"), Path.Combine(side, "a.txt"), overwrite: true);

        Assert.Equal("a.txt", _drive.PathOf(second));
        Assert.Null(_drive.PathOf(first));
    }

    [Fact]
    public void AnIdDoesNotLeadToANamedItemOfTheSameContent()
    {
        _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "alike"), _home.MakeSource("b.txt", "alike")]);
        var (first, second) = (_drive.PermanentId("a.txt"), _drive.PermanentId("b.txt"));
        File.Delete(_drive.InWorkspace("a.txt"));
        File.Delete(_drive.OnServer("a.txt"));

        Assert.Null(_drive.PathOf(first));
        Assert.Equal("b.txt", _drive.PathOf(second));
    }

    private void RequireNoConflict()
    {
        var result = _drive.Sync("");
        Assert.True(result.IsSuccess);
        Assert.Empty(result.ItemsCreated);
    }

    private void Run(string command, params string[] paths)
    {
        var ids = paths.Select(path => _drive.Item(path).Id).ToList();
        _home.Service.ExecuteCommand(new Command { Id = command }, new CommandContext(IntPtr.Zero, ids[0], ids[1..]));
    }

    private string StateOf(string path) =>
        (string)_home.Service.GetProperties([_drive.Item(path).Id], ["SyncState"]).Values.Single().Value;
}
