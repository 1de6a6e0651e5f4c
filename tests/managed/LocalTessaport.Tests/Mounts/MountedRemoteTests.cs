namespace Quorvex.Tessaport.API.Tests;

/// <summary>A drive whose server folder is on a mounted remote: no renaming without replacing, no links, other file numbers each time.</summary>
public sealed class MountedRemoteTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly MountedFolder _mount;
    private readonly TestDrive _drive;
    private readonly string _remote;

    public MountedRemoteTests()
    {
        _drive = _home.AddDrive();
        if (OperatingSystem.IsWindows())
        {
            (_mount, _remote) = (null!, "");
            return;
        }
        _mount = new MountedFolder(_home.Root);
        _remote = Path.Combine(_mount.Remote, "plans");
        Directory.CreateDirectory(_remote);
        // A folder in the mount, so that it is missing while nothing is mounted.
        _home.Configure(_drive, "server", Path.Combine(_mount.Point, "plans"));
        _mount.Mount();
    }

    public void Dispose()
    {
        Step.Hook = null;
        _mount?.Dispose();
        _home.Dispose();
    }

    [UnixFact]
    public void ChangesGoBothWaysInOneSync()
    {
        PutFiles(10);
        _drive.PutInWorkspace("a/b/deep.txt");
        SyncOnce();
        Assert.Equal("content 3", File.ReadAllText(InRemote("3.txt")));

        _drive.PutInWorkspace("3.txt", "changed here", 1);
        File.WriteAllText(InRemote("4.txt"), "changed elsewhere");
        File.WriteAllText(InRemote("a/new.txt"), "new elsewhere");
        File.Move(_drive.InWorkspace("5.txt"), _drive.InWorkspace("a/5 moved.txt"));
        SyncOnce();

        Assert.Equal("changed here", File.ReadAllText(InRemote("3.txt")));
        Assert.Equal("changed elsewhere", File.ReadAllText(_drive.InWorkspace("4.txt")));
        Assert.Equal("new elsewhere", File.ReadAllText(_drive.InWorkspace("a/new.txt")));
        Assert.False(File.Exists(InRemote("5.txt")));
        RequireEqualSides(12);
    }

    [UnixFact]
    public void AfterARemountEverythingIsInSync()
    {
        PutFiles(10);
        SyncOnce();
        var times = TimesInRemote();

        _mount.Unmount();
        _mount.Mount();
        SyncOnce();

        Assert.Equal(times, TimesInRemote());
        RequireEqualSides(10);
    }

    [UnixFact]
    public void AServerThatGoesAwayDuringASyncLosesNothing()
    {
        PutFiles(40);
        using var end = StepAction.At("Commit.Placed", "/20.txt", _ => _mount.BreakOff());

        Assert.False(_drive.Sync("").IsSuccess);
        Assert.True(end.WasReached);
        Assert.Equal(40, _drive.FilesInWorkspace().Count);

        _mount.Clear();
        Assert.False(_drive.Sync("").IsSuccess);
        Assert.Empty(Directory.EnumerateFileSystemEntries(_mount.Point));

        _mount.Mount();
        SyncOnce();
        RequireEqualSides(40);
    }

    [UnixTheory]
    [InlineData("--uid=65532")]
    [InlineData("--umask=0")]
    public void AMountThatShowsAnotherOwnerOrRightsForEveryoneIsSynced(string option)
    {
        _mount.Unmount();
        _mount.Mount(option);
        PutFiles(3);
        SyncOnce();
        _drive.PutInWorkspace("1.txt", "changed here", 1);
        using (var end = StepAction.At("Commit.Placed", "/1.txt", _ => throw new IOException("The process ends here.")))
            Assert.False(_drive.Sync("").IsSuccess);
        SyncOnce();

        RequireEqualSides(3);
        Assert.False(Directory.Exists(InRemote(".tessaport")));
    }

    private string InRemote(string path) => Path.Combine(_remote, path);

    private void PutFiles(int count)
    {
        for (var i = 0; i < count; ++i)
            _drive.PutInWorkspace($"{i}.txt", $"content {i}");
    }

    private void SyncOnce()
    {
        var result = _drive.Sync("");
        Assert.True(result.IsSuccess, (string?)_home.Service.GetProperties([_drive.Root.Id], ["Pending"]).Values.SingleOrDefault()?.Value);
        Assert.Empty(result.ItemsCreated);
    }

    private Dictionary<string, DateTime> TimesInRemote() =>
        Directory.EnumerateFiles(_remote).ToDictionary(path => path, File.GetLastWriteTimeUtc);

    private void RequireEqualSides(int files)
    {
        var here = _drive.FilesInWorkspace();
        Assert.Equal(files, here.Count);
        var there = Directory.EnumerateFiles(_remote, "*", SearchOption.AllDirectories);
        Assert.Equal(here, there.Select(path => Path.GetRelativePath(_remote, path)).Order(StringComparer.Ordinal));
        foreach (var file in here)
            Assert.Equal(File.ReadAllBytes(_drive.InWorkspace(file)), File.ReadAllBytes(InRemote(file)));
    }
}
