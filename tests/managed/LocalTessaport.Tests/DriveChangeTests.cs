namespace Quorvex.Tessaport.API.Tests;

/// <summary>Changes of the list of drives: proposals that are checked first, and changes while a request runs.</summary>
public sealed class DriveChangeTests : IDisposable
{
    private const string Variable = "TESSAPORT_PROPOSED_DRIVES";

    private readonly TestHome _home = new();
    private readonly string _proposal = Path.GetTempFileName();

    public void Dispose()
    {
        Environment.SetEnvironmentVariable(Variable, null);
        File.Delete(_proposal);
        _home.Dispose();
    }

    [Fact]
    public void AProposalIsAnsweredFromAndNothingIsMadeForIt()
    {
        var drive = _home.AddDrive(name: "As it is");
        _home.Service.Discover();
        var before = Directory.GetFileSystemEntries(_home.Root, "*", SearchOption.AllDirectories).Order();
        Propose(Entry(drive.Id, "As it is", "ws", "sv"), Entry(Guid.NewGuid(), "Proposed", "new/ws", "new/sv"));

        var drives = _home.Service.GetDrives();

        Assert.Equal(["As it is", "Proposed"], drives.Select(d => d.Name));
        Assert.Equal(before, Directory.GetFileSystemEntries(_home.Root, "*", SearchOption.AllDirectories).Order());
        Environment.SetEnvironmentVariable(Variable, null);
        Assert.Equal(["As it is"], _home.Service.GetDrives().Select(d => d.Name));
    }

    [Theory]
    [InlineData("new", "new/inner", "overlap")]
    [InlineData("new", "state", "which the service keeps for itself")]
    [InlineData("here", "new", "of the drive 'As it is' overlap")]
    public void AProposalThatBreaksARuleIsRefusedWithTheReasonAndTheFileToCorrect(string workspace, string server, string reason)
    {
        Propose(Entry(Guid.NewGuid(), "As it is", "here", "there"), Entry(Guid.NewGuid(), "Proposed", workspace, server));

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(reason, message);
        Assert.Contains($"correct '{Path.Combine(_home.Root, "drives.json")}'", message);
    }

    [Theory]
    [InlineData("offline", true)]
    [InlineData("writable", false)]
    [InlineData("name", "Renamed")]
    public void AChangeDuringASyncCountsFromTheNextRequestAndLosesNothing(string member, object value)
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt", "from here");
        drive.PutOnServer("b.txt", "from there");
        using var change = StepAction.At("Copy.Read", ".txt", _ => _home.Configure(drive, member, value));

        var result = drive.Sync("");

        Assert.True(change.WasReached);
        Assert.True(result.IsSuccess);
        Assert.Equal(["a.txt", "b.txt"], drive.FilesInWorkspace());
        Assert.Equal(["a.txt", "b.txt"], drive.FilesOnServer());
        Assert.Equal(member == "name" ? "Renamed" : "Drive 0", drive.Record.Name);
        drive.PutInWorkspace("a.txt", "newer", minutes: 5);
        Assert.Equal(member == "name", drive.Sync("").IsSuccess);
        Assert.Equal("newer", File.ReadAllText(drive.InWorkspace("a.txt")));
    }

    [Fact]
    public void APatternThatIsSetDuringASyncCountsFromTheNextOneAndLosesNothing()
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt", "from here");
        drive.PutOnServer("b.txt", "from there");
        using var change = StepAction.At("Copy.Read", ".txt", _ => _home.Configure(drive, "ignore", new[] { "*.txt" }));

        Assert.True(drive.Sync("").IsSuccess);

        Assert.True(change.WasReached);
        Assert.Equal(["a.txt", "b.txt"], drive.FilesInWorkspace());
        Assert.Equal(["a.txt", "b.txt"], drive.FilesOnServer());
        drive.PutInWorkspace("a.txt", "newer", minutes: 5);
        File.Delete(drive.OnServer("b.txt"));
        Assert.True(drive.Sync("").IsSuccess);
        Assert.Equal("from here", File.ReadAllText(drive.OnServer("a.txt")));
        Assert.Equal("from there", File.ReadAllText(drive.InWorkspace("b.txt")));
        Assert.Equal(["a.txt"], drive.FilesOnServer());
        _home.Configure(drive, "ignore", Array.Empty<string>());
        Assert.True(drive.Sync("").IsSuccess);
        Assert.Equal("newer", File.ReadAllText(drive.OnServer("a.txt")));
        Assert.Equal(["a.txt", "b.txt"], drive.FilesOnServer());
    }

    [Theory]
    [InlineData("sync")]
    [InlineData("add")]
    [InlineData("make folder")]
    [InlineData("delete")]
    public void APatternThatIsSetWhileARequestWaitsForAnotherCountsForIt(string request)
    {
        var drive = _home.AddDrive();
        drive.PutBoth("synced.tmp", "synced");
        Assert.True(drive.Sync("").IsSuccess);
        drive.PutInWorkspace("a.tmp", "mine");
        var source = _home.MakeSource("b.tmp");
        using var change = StepAction.At("Change.Begin", "", _ => _home.Configure(drive, "ignore", new[] { "*.tmp" }));

        var succeeded = request switch
        {
            "sync" => drive.Sync("").IsSuccess,
            "add" => _home.Service.AddFiles(drive.Root.Id, [source]).IsSuccess,
            "delete" => _home.Service.DeleteItems([drive.Item("synced.tmp").Id]).IsSuccess,
            _ => Record.Exception(() => _home.Service.GetOrCreateFolder(drive.Root.Id, "c.tmp")) is null,
        };

        Assert.True(change.WasReached);
        Assert.Equal(request == "sync", succeeded);
        Assert.Equal(["synced.tmp"], drive.FilesOnServer());
        Assert.Equal(["a.tmp", "synced.tmp"], drive.FilesInWorkspace());
        Assert.Empty(Directory.GetDirectories(drive.Server, "c.tmp"));
    }

    [Fact]
    public void ADriveThatIsRemovedWhileARequestWaitsForAnotherIsNotChanged()
    {
        var drive = _home.AddDrive();
        _home.Service.Discover();
        drive.PutInWorkspace("a.txt");
        using var change = StepAction.At("Change.Begin", "", _ => _home.WriteDrives("[]"));

        Assert.False(drive.Sync("").IsSuccess);

        Assert.True(change.WasReached);
        Assert.Empty(drive.FilesOnServer());
    }

    [Fact]
    public void ADriveThatIsRemovedDuringASyncKeepsItsFilesAndCanBeAddedAgain()
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt", "from here");
        drive.PutOnServer("b.txt", "from there");
        using var change = StepAction.At("Copy.Read", ".txt", _ => _home.WriteDrives("[]"));

        drive.Sync("");

        Assert.True(change.WasReached);
        Assert.Empty(_home.Service.GetDrives());
        Assert.Equal("from here", File.ReadAllText(drive.InWorkspace("a.txt")));
        Assert.Equal("from there", File.ReadAllText(drive.OnServer("b.txt")));
        var folder = Path.GetDirectoryName(Path.GetRelativePath(_home.Root, drive.Workspace))!.Replace('\\', '/');
        _home.WriteDrives($"[{Entry(Guid.NewGuid(), "Again", folder + "/ws", folder + "/sv")}]");
        drive.PutInWorkspace("a.txt", "newer from here", minutes: 5);
        var again = _home.Service.GetDrives().Single();
        Assert.True(_home.Service.SyncFiles([again.Root.Id]).IsSuccess);
        Assert.Equal("from there", File.ReadAllText(drive.InWorkspace("b.txt")));
        Assert.Contains("newer from here", drive.FilesOnServer().Select(file => File.ReadAllText(drive.OnServer(file))));
    }

    private void Propose(params string[] entries)
    {
        File.WriteAllText(_proposal, $"[{string.Join(", ", entries)}]");
        Environment.SetEnvironmentVariable(Variable, _proposal);
    }

    private static string Entry(Guid id, string name, string workspace, string server) =>
        $$"""{"id": "{{id}}", "name": "{{name}}", "type": "Quorvex.DataSourceType.Drive", "workspace": "{{workspace}}", "server": "{{server}}"}""";
}
