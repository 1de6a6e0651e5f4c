namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// A link in the place of a folder leads out of the drive; nothing is read, written or deleted through it. Wine creates no links, and
/// Windows lets only administrators do so.
/// </summary>
public sealed class FolderLinkTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;
    private readonly string _outside;

    public FolderLinkTests()
    {
        _drive = _home.AddDrive();
        _outside = Path.Combine(_home.Root, "outside");
        Directory.CreateDirectory(_outside);
        File.WriteAllText(Path.Combine(_outside, "secret.txt"), "secret");
    }

    public void Dispose() => _home.Dispose();

    [UnixTheory]
    [MemberData(nameof(Without.OpeningFeatures), MemberType = typeof(Without))]
    public void ASyncNeitherWritesNorReadsThroughALink(string features)
    {
        using var without = new Without(features);
        _drive.PutOnServer("folder/new.txt");
        _drive.PutOnServer("inner/folder/new.txt");
        Link(_drive.InWorkspace("folder"));
        Directory.CreateDirectory(_drive.InWorkspace("inner"));
        Link(_drive.InWorkspace("inner/folder"));

        Assert.False(_drive.Sync("").IsSuccess);

        RequireOutsideUntouched();
        Assert.Equal(["folder/new.txt", "inner/folder/new.txt"], _drive.FilesOnServer());
        Assert.Equal(_outside, new DirectoryInfo(_drive.InWorkspace("folder")).LinkTarget);
    }

    [UnixTheory]
    [MemberData(nameof(Without.OpeningFeatures), MemberType = typeof(Without))]
    public void NothingIsFoundBehindALink(string features)
    {
        using var without = new Without(features);
        Link(_drive.InWorkspace("folder"));
        Link(_drive.OnServer("folder"));

        Assert.Null(_drive.Find("folder"));
        Assert.Null(_drive.Find("folder/secret.txt"));
        Assert.Empty(_home.Service.GetFolderContents(_drive.Root.Id));
        Assert.True(_drive.Sync("").IsSuccess);
        RequireOutsideUntouched();
    }

    [UnixTheory]
    [MemberData(nameof(Without.OpeningFeatures), MemberType = typeof(Without))]
    public void DeletingAnItemLeavesWhatHasItsNameBehindALink(string features)
    {
        using var without = new Without(features);
        _drive.PutOnServer("folder/secret.txt", "on the server");
        Link(_drive.InWorkspace("folder"));

        Assert.True(_home.Service.DeleteItems([_drive.Item("folder/secret.txt").Id]).IsSuccess);

        RequireOutsideUntouched();
        Assert.Empty(_drive.FilesOnServer());
    }

    [UnixTheory]
    [MemberData(nameof(Without.OpeningFeatures), MemberType = typeof(Without))]
    public void AFileIsNotAddedThroughALink(string features)
    {
        using var without = new Without(features);
        _drive.PutOnServer("folder/other.txt");
        Link(_drive.InWorkspace("folder"));

        var added = _home.Service.AddFiles(_drive.Item("folder").Id, [_home.MakeSource("secret.txt", "added")]);

        Assert.False(added.IsSuccess);
        RequireOutsideUntouched();
        Assert.Equal(["folder/other.txt"], _drive.FilesOnServer());
    }

    [UnixTheory]
    [InlineData("Copy.Opened")]
    [InlineData("Copy.Read")]
    [InlineData("Commit.Checked")]
    public void AFolderReplacedByALinkDuringASyncIsNotFollowed(string step)
    {
        _drive.PutOnServer("folder/new.txt", "on the server");
        Directory.CreateDirectory(_drive.InWorkspace("folder"));
        using var swap = StepAction.At(step, "new.txt", _ =>
        {
            Directory.Move(_drive.InWorkspace("folder"), _drive.InWorkspace("moved"));
            Link(_drive.InWorkspace("folder"));
        });

        _drive.Sync("");

        Assert.True(swap.WasReached);
        RequireOutsideUntouched();
        // The folder was moved, which the same sync may have followed.
        Assert.Equal("on the server", File.ReadAllText(_drive.OnServer(Assert.Single(_drive.FilesOnServer()))));
    }

    [UnixFact]
    public void AFileReplacedByALinkBeforeItIsReadIsNotFollowed()
    {
        _drive.PutInWorkspace("a.txt");
        using var swap = StepAction.At("Open.Examined", "a.txt", path =>
        {
            File.Delete(path);
            File.CreateSymbolicLink(path, Path.Combine(_outside, "secret.txt"));
        });

        Assert.False(_drive.Sync("").IsSuccess);

        Assert.True(swap.WasReached);
        Assert.Empty(_drive.FilesOnServer());
    }

    [UnixTheory]
    [InlineData("Open.Examined")]
    [InlineData("Commit.Checked")]
    [InlineData("Commit.Guarded")]
    [InlineData("Commit.Placed")]
    public async Task AFileReplacedByAPipeDuringASyncIsNotWaitedForAndThePipeStays(string step)
    {
        _drive.PutBoth("a.txt");
        Assert.True(_drive.Sync("").IsSuccess);
        _drive.PutInWorkspace("a.txt", "changed here", 3);
        var replaced = step == "Open.Examined" ? _drive.InWorkspace("a.txt") : _drive.OnServer("a.txt");
        using var swap = StepAction.At(step, replaced, path =>
        {
            File.Delete(path);
            UnixCalls.Run("mkfifo", path);
        });
        var token = TestContext.Current.CancellationToken;

        var result = await Task.Run(() => _drive.Sync(""), token).WaitAsync(TimeSpan.FromSeconds(60), token);

        Assert.True(swap.WasReached);
        Assert.False(result.IsSuccess);
        Assert.Equal("fifo", UnixCalls.Run("stat", "--format=%F", replaced).Trim());
        Assert.False(Directory.Exists(_drive.OnServer(".tessaport")));
    }

    [UnixFact]
    public void AFolderMovedOutOfTheDriveWhileItsFileIsCopiedIsNotFilled()
    {
        _drive.PutOnServer("folder/new.txt");
        Directory.CreateDirectory(_drive.InWorkspace("folder"));
        using var swap = StepAction.At("Copy.Read", "new.txt", _ =>
            Directory.Move(_drive.InWorkspace("folder"), Path.Combine(_outside, "folder")));

        _drive.Sync("");

        Assert.Empty(Directory.GetFileSystemEntries(Path.Combine(_outside, "folder")));
    }

    [UnixFact]
    public void ARootReplacedByALinkIsAnErrorThatNamesIt()
    {
        _drive.PutInWorkspace("a.txt");
        _drive.Sync("");
        Directory.Move(_drive.Server, _drive.Server + "-moved");
        Link(_drive.Server);

        var failure = Assert.ThrowsAny<IOException>(() => _home.Service.GetFolderContents(_drive.Root.Id).ToList());

        Assert.Contains(_drive.Server, failure.Message);
        RequireOutsideUntouched();
    }

    [UnixFact]
    public void LinksPipesAndSocketsStayInBothDirections()
    {
        File.CreateSymbolicLink(_drive.InWorkspace("link"), Path.Combine(_outside, "secret.txt"));
        using (var make = Process.Start("mkfifo", [_drive.InWorkspace("pipe")]))
            make.WaitForExit();
        using var socket = new System.Net.Sockets.Socket(System.Net.Sockets.AddressFamily.Unix, System.Net.Sockets.SocketType.Stream, 0);
        Directory.SetCurrentDirectory(_drive.Workspace);
        socket.Bind(new System.Net.Sockets.UnixDomainSocketEndPoint("socket"));
        Directory.SetCurrentDirectory("/");
        foreach (var name in new[] { "link", "pipe", "socket" })
            _drive.PutOnServer(name, "a file of the same name");

        Assert.False(_drive.Sync("").IsSuccess);
        Assert.False(_home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("pipe")]).IsSuccess);
        _home.Service.DeleteItems([_drive.Item("link").Id, _drive.Item("pipe").Id, _drive.Item("socket").Id]);

        var names = Directory.GetFileSystemEntries(_drive.Workspace).Select(Path.GetFileName).Order();
        Assert.Equal(["link", "pipe", "socket"], names.Where(name => name is not ".tessaport"));
        RequireOutsideUntouched();
    }

    private void Link(string path)
    {
        Directory.CreateDirectory(Path.GetDirectoryName(path)!);
        Directory.CreateSymbolicLink(path, _outside);
    }

    private void RequireOutsideUntouched()
    {
        Assert.Equal(["secret.txt"], Directory.GetFileSystemEntries(_outside).Select(Path.GetFileName));
        Assert.Equal("secret", File.ReadAllText(Path.Combine(_outside, "secret.txt")));
    }
}
