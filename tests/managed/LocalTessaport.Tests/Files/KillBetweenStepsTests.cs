namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// A user saves a file in the moment in which it is replaced or removed, and the process is killed before it has looked at what it
/// took out. The next request puts it back.
/// </summary>
public sealed class KillBetweenStepsTests : IDisposable
{
    private const string Saved = "saved by the user";

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public KillBetweenStepsTests()
    {
        _drive = _home.AddDrive();
        _drive.PutBoth("folder/a.txt", "synced");
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    [UnixTheory]
    [InlineData("Commit.Guarded", "Commit.Exchanged", "None")]
    [InlineData("Commit.Guarded", "Commit.SetAside", "Exchanging")]
    public void AVersionSavedDuringADownloadIsKept(string savesAt, string diesAt, string lacks)
    {
        _drive.PutOnServer("folder/a.txt", "from the server", 5);

        KillAtStep("sync-once", savesAt, diesAt, lacks);
        _home.Service.Discover();

        RequireKept(Saved);
        RequireKept("from the server");
    }

    public static TheoryData<string, string, string> LostPlaces()
    {
        var places = new TheoryData<string, string, string>();
        foreach (var damage in new[] { "empty", "zeros", "half", "missing" })
        {
            places.Add("Commit.Exchanged", "None", damage);
            places.Add("Commit.SetAside", "Exchanging", damage);
        }
        return places;
    }

    // What was not flushed may be missing from the disk after a power failure.
    [UnixTheory]
    [MemberData(nameof(LostPlaces))]
    public void AVersionSavedDuringADownloadIsKeptIfItsPlaceWasLost(string diesAt, string lacks, string damage)
    {
        _drive.PutOnServer("folder/a.txt", "from the server", 5);
        KillAtStep("sync-once", "Commit.Guarded", diesAt, lacks);

        Assert.Equal(1, DamagePlaces(damage));
        _home.Service.Discover();

        RequireKept(Saved);
        Assert.True(_drive.Sync("").IsSuccess);
        RequireKept(Saved);
        RequireKept("from the server");
    }

    [UnixTheory]
    [InlineData("empty")]
    [InlineData("missing")]
    public void AVersionSavedDuringARemovalIsKeptIfItsPlaceWasLost(string damage)
    {
        _drive.PutBoth("a.txt", "synced");
        Directory.Delete(_drive.InWorkspace("folder"), recursive: true);
        Directory.Delete(_drive.OnServer("folder"), recursive: true);
        KillAtStep("delete", "Remove.Checked", "Remove.Moved", "None");

        Assert.Equal(1, DamagePlaces(damage));
        _home.Service.Discover();

        RequireKept(Saved);
    }

    [UnixTheory]
    [InlineData("Commit.Guarded")]
    [InlineData("Commit.Exchanged")]
    public void WhatNoOneTouchedIsNotKeptTwiceIfItsPlaceWasLost(string diesAt)
    {
        _drive.PutOnServer("folder/a.txt", "from the server", 5);
        KillAtStep("sync-once", "", diesAt, "None");

        Assert.Equal(1, DamagePlaces("empty"));
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["folder/a.txt"], _drive.FilesInWorkspace());
        Assert.Equal("from the server", File.ReadAllText(_drive.InWorkspace("folder/a.txt")));
    }

    // Many files are prepared before the first of them is placed.
    [UnixTheory]
    [InlineData("Commit.Guarded", "Commit.Exchanged", "None")]
    [InlineData("Commit.Guarded", "Commit.SetAside", "Exchanging")]
    public void AVersionSavedDuringADownloadOfManyFilesIsKept(string savesAt, string diesAt, string lacks)
    {
        var names = Enumerable.Range(0, 100).Select(i => $"folder/{i}.txt").ToList();
        names.ForEach(name => _drive.PutBoth(name, "synced"));
        Assert.True(_drive.Sync("").IsSuccess);
        names.ForEach(name => _drive.PutOnServer(name, $"{name} from the server", 5));

        KillAtStep("sync-once", savesAt, diesAt, lacks);
        _home.Service.Discover();

        RequireKept(Saved);
        Assert.True(_drive.Sync("").IsSuccess);
        RequireKept(Saved);
        names.ForEach(name => RequireKept($"{name} from the server"));
    }

    [UnixTheory]
    [InlineData("Commit.Exchanged", "None", "from the server")]
    [InlineData("Commit.SetAside", "Exchanging", "synced")]
    public void AFileThatNoOneTouchedIsCompleteAndThereOnce(string diesAt, string lacks, string content)
    {
        _drive.PutOnServer("folder/a.txt", "from the server", 5);

        KillAtStep("sync-once", "", diesAt, lacks);
        _home.Service.Discover();

        Assert.Equal(["folder/a.txt"], _drive.FilesInWorkspace());
        Assert.Equal(content, File.ReadAllText(_drive.InWorkspace("folder/a.txt")));
    }

    [UnixFact]
    public void AVersionSavedDuringARemovalIsKept()
    {
        _drive.PutBoth("a.txt", "synced");
        Directory.Delete(_drive.InWorkspace("folder"), recursive: true);
        Directory.Delete(_drive.OnServer("folder"), recursive: true);

        KillAtStep("delete", "Remove.Checked", "Remove.Moved", "None");
        _home.Service.Discover();

        RequireKept(Saved);
    }

    [UnixTheory]
    [InlineData("Settle.Checked", "None")]
    [InlineData("Copy.Read", "None")]
    [InlineData("Commit.Exchanged", "None")]
    [InlineData("Put.BetweenSides", "None")]
    [InlineData("Settle.Placed", "None")]
    [InlineData("Remove.Moved", "None")]
    [InlineData("Put.BetweenSides", "Exchanging")]
    public void AConflictThatIsBeingSettledHasOneCompleteVersionUnderTheNameAtAnyMoment(string diesAt, string lacks)
    {
        _drive.PutBoth("a.txt", "synced");
        _home.Service.SyncFiles([_drive.Root.Id]);
        _drive.PutInWorkspace("a.txt", "mine", 3);
        _drive.PutOnServer("a.txt", "theirs", 4);
        _home.Service.SyncFiles([_drive.Root.Id]);

        KillAtStep("settle", "", diesAt, lacks);
        var (here, there) = (File.ReadAllText(_drive.InWorkspace("a.txt")), File.ReadAllText(_drive.OnServer("a.txt")));
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.All(new[] { here, there }, content => Assert.Contains(content, new[] { "mine", "theirs" }));
        RequireKept("mine");
        foreach (var copy in _drive.FilesInWorkspace().Where(path => path.Contains("(conflict ", StringComparison.Ordinal)))
            Assert.True(_home.Service.ExecuteCommand(
                new Command { Id = "use-this-version" }, new CommandContext(IntPtr.Zero, _drive.Item(copy).Id, [])).IsSuccess);
        Assert.Equal(["a.txt", "folder/a.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["a.txt", "folder/a.txt"], _drive.FilesOnServer());
        Assert.Equal(["mine", "mine"], new[] { _drive.InWorkspace("a.txt"), _drive.OnServer("a.txt") }.Select(File.ReadAllText));
    }

    private void RequireKept(string content)
    {
        var contents = _drive.FilesInWorkspace().Select(_drive.InWorkspace).Concat(_drive.FilesOnServer().Select(_drive.OnServer));
        Assert.Contains(content, contents.Select(File.ReadAllText));
        Assert.False(Directory.Exists(_drive.InWorkspace(".tessaport")) || Directory.Exists(_drive.OnServer(".tessaport")));
    }

    private int DamagePlaces(string damage)
    {
        var places = Directory.GetFiles(_home.Root, "*.places", SearchOption.AllDirectories);
        foreach (var place in places)
        {
            var content = File.ReadAllBytes(place);
            if (damage == "missing")
                File.Delete(place);
            else
                File.WriteAllBytes(place, damage switch { "empty" => [], "zeros" => new byte[content.Length], _ => content[..(content.Length / 2)] });
        }
        return places.Length;
    }

    private void KillAtStep(string command, string savesAt, string diesAt, string lacks)
    {
        var start = new ProcessStartInfo(Worker.Executable, [command]) { RedirectStandardOutput = true };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        start.Environment["VELMORA_WORKER_SAVES_AT"] = savesAt;
        start.Environment["VELMORA_WORKER_DIES_AT"] = diesAt;
        start.Environment["VELMORA_WORKER_LACKS"] = lacks;
        using var process = Process.Start(start)!;
        process.StandardOutput.ReadToEnd();
        process.WaitForExit();
        Assert.Equal(128 + 9, process.ExitCode);
    }
}
