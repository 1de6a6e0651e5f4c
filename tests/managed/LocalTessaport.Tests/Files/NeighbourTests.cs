namespace Quorvex.Tessaport.API.Tests;

/// <summary>What another user puts into a side that both may write to: it never makes the service act for that user.</summary>
public sealed class NeighbourTests : IDisposable
{
    private const string Other = "65533";
    private const string Unchecked = "0123-0000000000000001-0000000000000002";

    private readonly TestHome _home;
    private readonly TestDrive _drive;

    public NeighbourTests()
    {
        Assert.True(Environment.IsPrivilegedProcess, "Only root can make files of another user: run these tests as root.");
        _home = new TestHome();
        _drive = _home.AddDrive();
        _drive.PutOnServer("private/a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        UnixCalls.SetMode(_drive.OnServer("private"), UnixFileMode.UserRead | UnixFileMode.UserWrite | UnixFileMode.UserExecute);
        Run("chmod", "0777", _drive.Server);
    }

    public void Dispose() => _home.Dispose();

    [UnixTheory]
    [InlineData("")]
    [InlineData("copies-0")]
    public void ARecordOfAReplacementByAnotherUserPutsNoFileInAPrivateFolder(string inner)
    {
        var staging = MakeForeignStaging(inner);
        File.WriteAllText(Path.Combine(staging, Unchecked), "forged");
        File.WriteAllText(Path.Combine(staging, "any.places"), Unchecked + "\0private\\forged.txt\0");
        Give(_drive.OnServer(".tessaport"));

        _home.Service.Discover();
        _drive.Sync("");

        Assert.Equal([".tessaport", "private/a.txt"], _drive.FilesOnServer().Select(TopOfStaging).Distinct());
        Assert.True(File.Exists(Path.Combine(staging, Unchecked)));
    }

    [UnixFact]
    public void NoCopyIsPreparedInAFolderOfAnotherUser()
    {
        MakeForeignStaging();
        _drive.PutInWorkspace("b.txt");
        using var step = StepAction.At("Copy.Read", "b.txt", _ => { });

        Assert.False(_drive.Sync("").IsSuccess);

        Assert.False(step.WasReached);
        Assert.Empty(Directory.GetFileSystemEntries(_drive.OnServer(".tessaport")));
        Assert.Contains(_drive.OnServer(".tessaport") + "' belongs to another user", SyncErrorOf("b.txt"));
        Assert.Contains("belongs to another user", UpkeepError());

        Directory.Delete(_drive.OnServer(".tessaport"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Null(UpkeepError());
    }

    [UnixFact]
    public void NoDeletedItemGoesThroughAFolderOfAnotherUser()
    {
        MakeForeignStaging();

        Assert.False(_home.Service.DeleteItems([_drive.Item("private").Id]).IsSuccess);

        Assert.Contains("private/a.txt", _drive.FilesOnServer());
    }

    [UnixTheory]
    [InlineData("0755")]
    [InlineData("0700")]
    public void AFolderOfTheUserThatAnotherRenamedToTheStagingFolderKeepsItsFiles(string mode)
    {
        _drive.PutOnServer("private/new.txt");
        Run("chmod", mode, _drive.OnServer("private"));
        Directory.Move(_drive.OnServer("private"), _drive.OnServer(".tessaport"));
        _drive.PutInWorkspace("b.txt");

        _home.Service.Discover();
        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Equal([".tessaport/a.txt", ".tessaport/new.txt"], _drive.FilesOnServer());
        Assert.Contains(_drive.OnServer(".tessaport") + "' was not made by the service", SyncErrorOf("b.txt"));
        Assert.Contains("Rename it", UpkeepError());

        Directory.Move(_drive.OnServer(".tessaport"), _drive.OnServer("mine"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Contains("mine/a.txt", _drive.FilesInWorkspace());
        Assert.Contains("mine/new.txt", _drive.FilesInWorkspace());
        Assert.Null(UpkeepError());
    }

    [UnixFact]
    public void AStagingFolderThatOthersMayWriteToIsNotUsed()
    {
        Directory.CreateDirectory(_drive.OnServer(".tessaport"));
        Run("chmod", "1770", _drive.OnServer(".tessaport"));
        _drive.PutInWorkspace("b.txt");

        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Contains("was not made by the service", SyncErrorOf("b.txt"));
    }

    [UnixTheory]
    [InlineData("2775")]
    [InlineData("1777")]
    public void ASharedSideWithMarksOfItsOwnIsSynced(string mode)
    {
        Run("chmod", mode, _drive.Server);
        _drive.PutInWorkspace("b.txt");

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["b.txt", "private/a.txt"], _drive.FilesOnServer());
    }

    [UnixTheory]
    [InlineData("None")]
    [InlineData("MarkedFolders")]
    public void OneOfAnotherUserIsFoundAlsoOnFileSystemsThatKeepNoMark(string features)
    {
        using var without = new Without(features);
        _drive.PutInWorkspace("b.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.False(Directory.Exists(_drive.OnServer(".tessaport")));

        MakeForeignStaging();
        Run("chmod", "1700", _drive.OnServer(".tessaport"));
        _drive.PutInWorkspace("c.txt");
        Assert.False(_drive.Sync("").IsSuccess);

        Assert.Contains("belongs to another user", SyncErrorOf("c.txt"));
    }

    [UnixTheory]
    [InlineData("0755")]
    [InlineData("0700")]
    [InlineData("0777")]
    public void AUserWithoutPrivilegesIsToldWhoseFolderItIs(string mode)
    {
        _drive.PutInWorkspace("b.txt");
        Run("chown", "-R", "65534:65534", _home.Root);
        MakeForeignStaging();
        Run("chmod", mode, _drive.OnServer(".tessaport"));
        var start = new ProcessStartInfo(Worker.Executable, ["sync-once"]) { RedirectStandardOutput = true };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        start.Environment["VELMORA_WORKER_DROPS_PRIVILEGES"] = "1";
        using var worker = Process.Start(start)!;
        worker.WaitForExit();

        Assert.Equal(1, worker.ExitCode);
        Assert.Contains("belongs to another user", SyncErrorOf("b.txt"));
        Assert.Empty(Directory.GetFileSystemEntries(_drive.OnServer(".tessaport")));
    }

    private static string TopOfStaging(string path) => path.StartsWith(".tessaport", StringComparison.Ordinal) ? ".tessaport" : path;

    private static void Run(string program, params string[] arguments) => UnixCalls.Run(program, arguments);

    private static void Give(string path) => Run("chown", "-R", Other, path);

    private string MakeForeignStaging(string inner = "")
    {
        var staging = Directory.CreateDirectory(Path.Combine(_drive.OnServer(".tessaport"), inner)).FullName;
        Run("chmod", "-R", "0777", _drive.OnServer(".tessaport"));
        Give(_drive.OnServer(".tessaport"));
        return staging;
    }

    private string SyncErrorOf(string path) =>
        (string)_home.Service.GetProperties([_drive.Item(path).Id], ["SyncError"]).Values.Single().Value;

    private string? UpkeepError() =>
        (string?)_home.Service.GetProperties([_drive.Root.Id], ["UpkeepError"]).Values.SingleOrDefault()?.Value;
}
