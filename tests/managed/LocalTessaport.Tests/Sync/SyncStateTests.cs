namespace Quorvex.Tessaport.API.Tests;

/// <summary>The properties that show the sync state of an item and the reason of its last failure.</summary>
public sealed class SyncStateTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public SyncStateTests()
    {
        _drive = _home.AddDrive(locking: true);
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    [Fact]
    public void EachKindOfDifferenceHasItsState()
    {
        foreach (var name in new[] { "same.txt", "here.txt", "server.txt", "both.txt" })
            _drive.PutBoth(name, "old");
        Assert.True(_drive.Sync("").IsSuccess);
        _drive.PutInWorkspace("here.txt", "mine", 3);
        _drive.PutOnServer("server.txt", "theirs", 3);
        _drive.PutInWorkspace("both.txt", "mine", 3);
        _drive.PutOnServer("both.txt", "theirs", 4);
        _drive.PutInWorkspace("new.txt");
        _drive.PutOnServer("remote/new.txt");

        Assert.Equal("in-sync", StateOf("same.txt"));
        Assert.Equal("changed-here", StateOf("here.txt"));
        Assert.Equal("changed-on-server", StateOf("server.txt"));
        Assert.Equal("changed-on-both", StateOf("both.txt"));
        Assert.Equal("only-here", StateOf("new.txt"));
        Assert.Equal("only-on-server", StateOf("remote"));
        Assert.Null(StateOf(""));

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.All(new[] { "here.txt", "server.txt", "both.txt", "new.txt", "remote/new.txt" }, path => Assert.Equal("in-sync", StateOf(path)));
    }

    [Fact]
    public void AnEditThatKeepsSizeAndTimeIsAChange()
    {
        _drive.PutBoth("a.txt", "content");
        Assert.True(_drive.Sync("").IsSuccess);

        _drive.PutInWorkspace("a.txt", "CONTENT");

        Assert.Equal("changed-here", StateOf("a.txt"));
    }

    [Fact]
    public void AFileWhoseRightsChangedIsStillInSync()
    {
        _drive.PutBoth("a.txt", "content");
        Assert.True(_drive.Sync("").IsSuccess);

        if (!OperatingSystem.IsWindows())
            File.SetUnixFileMode(_drive.InWorkspace("a.txt"), UnixFileMode.UserRead | UnixFileMode.UserWrite | UnixFileMode.GroupRead);

        Assert.Equal("in-sync", StateOf("a.txt"));
    }

    [UnixFact]
    public void AReservedNameIsLeftOut()
    {
        _drive.PutInWorkspace("con.txt");

        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Equal("left-out", StateOf("con.txt"));
        Assert.Contains("every platform", ErrorOf("con.txt"));
    }

    [UnixFact]
    public void ALeftOutItemSaysWhyBeforeAnySync()
    {
        _drive.PutInWorkspace("con.txt");
        _drive.PutBoth("aux.txt");

        Assert.Contains("'con.txt' is not a name that every platform accepts", ErrorOf("con.txt"));
        Assert.Null(ErrorOf("aux.txt"));
    }

    [Fact]
    public void AFailureIsKeptUntilARequestForTheItemSucceeds()
    {
        _drive.PutInWorkspace("x", "file");
        _drive.PutOnServer("x/inner.txt");
        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Equal("failed", StateOf("x"));
        Assert.Contains("a file on one side and a folder on the other", ErrorOf("x"));
        File.Delete(_drive.InWorkspace("x"));
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal("in-sync", StateOf("x"));
        Assert.Null(ErrorOf("x"));
    }

    [Fact]
    public void ALockedFileSaysWhyItIsNotDeleted()
    {
        _drive.PutBoth("sub/a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        _home.Service.ExecuteCommand(new Command { Id = "lock" }, new CommandContext(IntPtr.Zero, _drive.Item("sub/a.txt").Id, []));

        Assert.False(_home.Service.DeleteItems([_drive.Item("sub/a.txt").Id]).IsSuccess);

        Assert.Equal("locked", StateOf("sub/a.txt"));
        Assert.Contains("unlock it first", ErrorOf("sub/a.txt"));
    }

    [Fact]
    public void AFailedAdditionIsReportedAtTheTargetOrElseAtTheFolder()
    {
        _drive.PutBoth("sub/there.txt/inner.txt");

        Assert.False(_home.Service.AddFiles(_drive.Item("sub").Id, [_home.MakeSource("there.txt"), "/nowhere/absent.txt"]).IsSuccess);

        Assert.Contains("folder named 'there.txt'", ErrorOf("sub/there.txt"));
        Assert.Contains("absent.txt", ErrorOf("sub"));
        Assert.True(_home.Service.AddFiles(_drive.Item("sub").Id, [_home.MakeSource("good.txt")]).IsSuccess);
        Assert.Null(ErrorOf("sub"));
    }

    [Theory]
    [InlineData("offline", true, true, true)]
    [InlineData("writable", false, false, false)]
    [InlineData("writable", true, false, true)]
    public void TheRootSaysWhetherTheDriveCanBeReachedAndChanged(string member, bool value, bool offline, bool writable)
    {
        _home.Configure(_drive, member, value);

        var values = _home.Service.GetProperties([_drive.Root.Id], ["Offline", "Writable"]).Values;

        Assert.Equal([offline, writable], values.Select(property => property.Value));
    }

    [Fact]
    public void OnlyTheRootOfAnOfflineDriveHasValues()
    {
        _drive.PutBoth("a.txt");
        var file = _drive.Item("a.txt").Id;
        _home.Configure(_drive, "offline", true);

        var values = _home.Service.GetProperties([file, _drive.Root.Id], ["Name", "SyncState", "Offline"]).Values;

        Assert.Equal("Offline", Assert.Single(values).PropertyDefinitionId);
    }

    private string? StateOf(string path) => ValueOf(path, "SyncState");

    private string? ErrorOf(string path) => ValueOf(path, "SyncError");

    private string? ValueOf(string path, string property) =>
        (string?)_home.Service.GetProperties([path.Length == 0 ? _drive.Root.Id : _drive.Item(path).Id], [property]).Values.SingleOrDefault()?.Value;
}
