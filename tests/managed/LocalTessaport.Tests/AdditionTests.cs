namespace Quorvex.Tessaport.API.Tests;

public sealed class AdditionTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public AdditionTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AnAddedFileIsOnBothSidesWithItsTime()
    {
        var source = _home.MakeSource("plan é漢.txt", "the plan");
        File.SetLastWriteTimeUtc(source, new DateTime(2020, 2, 3, 4, 5, 6, DateTimeKind.Utc));

        var result = _home.Service.AddFiles(_drive.Root.Id, [source.Replace('/', '\\')]);

        Assert.True(result.IsSuccess);
        var item = Assert.Single(result.ItemsCreated);
        Assert.True(item is { Name: "plan é漢.txt", IsInWorkspace: true, IsOnServer: true });
        Assert.Equal(new DateTime(2020, 2, 3, 4, 5, 6, DateTimeKind.Utc), item.LastModifiedDate);
        Assert.Equal("the plan", File.ReadAllText(_drive.InWorkspace("plan é漢.txt")));
        Assert.Equal("the plan", File.ReadAllText(_drive.OnServer("plan é漢.txt")));
        Assert.Empty(result.ItemsUpdated);
    }

    [Fact]
    public void AddingAgainReplacesTheFile()
    {
        _drive.PutBoth("a.txt", "old");
        _home.Service.Discover();

        var result = _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "new")]);

        Assert.Equal("a.txt", Assert.Single(result.ItemsUpdated).Name);
        Assert.Empty(result.ItemsCreated);
        Assert.Equal(["a.txt"], _drive.FilesInWorkspace());
        Assert.Equal("new", File.ReadAllText(_drive.OnServer("a.txt")));
    }

    [Fact]
    public void AddingOverIndependentVersionsKeepsUnseenVersions()
    {
        _drive.PutInWorkspace("a.txt", "mine", minutes: 1);
        _drive.PutOnServer("a.txt", "theirs", minutes: 2);

        var result = _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "third")]);

        Assert.True(result.IsSuccess);
        Assert.Equal("third", File.ReadAllText(_drive.InWorkspace("a.txt")));
        Assert.Contains(_drive.FilesOnServer(), name => File.ReadAllText(_drive.OnServer(name)) == "mine");
    }

    // With a second name of one of the files, the others cannot simply change places here as they did on the server.
    [Theory]
    [InlineData(false)]
    [InlineData(true)]
    public void AddingAfterARotationReplacesOnlyTheVersionThatCameToItsPlace(bool hasSecondName)
    {
        foreach (var name in new[] { "a", "b", "c", "d" })
            _drive.PutBoth($"{name}.txt", name);
        if (hasSecondName)
        {
            foreach (var side in new[] { _drive.Workspace, _drive.Server })
                HardLink.Make(Path.Combine(side, "d.txt"), Path.Combine(side, "second.txt"));
        }
        Assert.True(_drive.Sync("").IsSuccess);
        RotateOnServer("a", "b", "c", "d");

        var result = _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("b.txt", "added")]);

        Assert.True(result.IsSuccess);
        Assert.True(_drive.Sync("").IsSuccess);
        foreach (var (name, content) in new[] { ("a", "b"), ("b", "added"), ("c", "d"), ("d", "a") })
        {
            Assert.Equal(content, File.ReadAllText(_drive.InWorkspace($"{name}.txt")));
            Assert.Equal(content, File.ReadAllText(_drive.OnServer($"{name}.txt")));
        }
        Assert.Equal(_drive.FilesOnServer(), _drive.FilesInWorkspace());
    }

    // Each takes the place of the one before.
    private void RotateOnServer(params string[] names)
    {
        string At(string name) => _drive.OnServer($"{name}.txt");
        File.Move(At(names[0]), At("aside"));
        for (var i = 1; i < names.Length; ++i)
            File.Move(At(names[i]), At(names[i - 1]));
        File.Move(At("aside"), At(names[^1]));
    }

    [Fact]
    public void TheGoodFilesOfABatchAreAddedAndTheOthersAreInNoList()
    {
        Directory.CreateDirectory(_drive.InWorkspace("folder"));
        string[] sources =
        [
            _home.MakeSource("one.txt"),
            _home.MakeSource("absent.txt"),
            _home.MakeSource("folder"),
            _home.MakeSource("elsewhere/one.txt", "other"),
            "relative.txt",
            _home.MakeSource("two.txt"),
        ];
        File.Delete(sources[1]);

        var result = _home.Service.AddFiles(_drive.Root.Id, [.. sources]);

        Assert.False(result.IsSuccess);
        Assert.Equal(["one.txt", "two.txt"], result.ItemsCreated.Select(item => item.Name));
        Assert.Equal("content", File.ReadAllText(_drive.OnServer("one.txt")));
        Assert.Equal(["one.txt", "two.txt"], _drive.FilesOnServer());
    }

    [Fact]
    public void AddingAFileOfTheWorkspaceToItsOwnFolderUploadsIt()
    {
        _drive.PutInWorkspace("sub/a.txt", "mine");

        var result = _home.Service.AddFiles(_drive.Item("sub").Id, [_drive.InWorkspace("sub/a.txt")]);

        Assert.True(result.IsSuccess);
        Assert.Equal("mine", File.ReadAllText(_drive.OnServer("sub/a.txt")));
    }

    [Theory]
    [InlineData("CON")]
    [InlineData("com1.tar.gz")]
    [InlineData("LPT²")]
    [InlineData("dot.")]
    [InlineData("space ")]
    [InlineData(".tessaport")]
    public void NamesThatSomePlatformReservesAreRefusedEverywhere(string name)
    {
        Directory.CreateDirectory(Path.Combine(_home.Root, "sources"));
        var source = LiteralPath.Of(Path.Combine(_home.Root, "sources", name));
        File.WriteAllText(source, "content");

        AssertRefused(source, name);
    }

    [Theory]
    [InlineData("a:b.txt")]
    [InlineData("what?.txt")]
    [InlineData("tab\t.txt")]
    public void NamesThatSomePlatformCannotStoreAreRefusedEverywhere(string name) =>
        AssertRefused(OperatingSystem.IsWindows() ? Path.Combine(_home.Root, name) : _home.MakeSource(name), name);

    private void AssertRefused(string source, string name)
    {
        Assert.False(_home.Service.CanAddFiles(_drive.Root.Id, [source]));
        Assert.False(_home.Service.AddFiles(_drive.Root.Id, [source]).IsSuccess);
        Assert.Throws<ArgumentException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, name));
        Assert.Empty(_drive.FilesOnServer());
    }

    [Fact]
    public void AFileCanBeAddedWhereAddingItWorks()
    {
        var source = _home.MakeSource("a.txt");
        _drive.PutBoth("file.txt");
        _drive.PutBoth("sub/x.txt");
        _drive.PutOnServer("taken/a.txt/inner.txt");
        var file = _drive.Item("file.txt");
        var sub = _drive.Item("sub");
        var taken = _drive.Item("taken");

        Assert.True(_home.Service.CanAddFiles(_drive.Root.Id, [source]));
        Assert.True(_home.Service.CanAddFiles(sub.Id, [source]));
        Assert.True(_home.Service.CanAddFiles(sub.Id, []));
        Assert.False(_home.Service.CanAddFiles(sub.Id, [source, _home.MakeSource("other/a.txt")]));
        Assert.False(_home.Service.CanAddFiles(file.Id, [source]));
        Assert.False(_home.Service.CanAddFiles(taken.Id, [source]));
        Assert.False(_home.Service.CanAddFiles(sub.Id, [source, source + ".absent"]));
        Assert.False(_home.Service.CanAddFiles(sub.Id, [Path.GetDirectoryName(source)!]));
        _home.Service.DeleteItems([sub.Id]);
        Assert.False(_home.Service.CanAddFiles(sub.Id, [source]));
        _home.Configure(_drive, "writable", false);
        Assert.False(_home.Service.CanAddFiles(_drive.Root.Id, [source]));
    }

    [Fact]
    public void AnUnreadableSourceIsNotAdded()
    {
        if (OperatingSystem.IsWindows() || Environment.IsPrivilegedProcess)
        {
            // A privileged user can read every file, so a file that another program locks serves instead.
            var locked = _home.MakeSource("locked.txt");
            using var holder = new FileStream(locked, FileMode.Open, FileAccess.ReadWrite, FileShare.None);
            Assert.False(_home.Service.AddFiles(_drive.Root.Id, [locked, _home.MakeSource("good.txt")]).IsSuccess);
        }
        else
        {
            var secret = _home.MakeSource("secret.txt");
            File.SetUnixFileMode(secret, UnixFileMode.None);
            Assert.False(_home.Service.CanAddFiles(_drive.Root.Id, [secret]));
            Assert.False(_home.Service.AddFiles(_drive.Root.Id, [secret, _home.MakeSource("good.txt")]).IsSuccess);
        }
        Assert.Equal(["good.txt"], _drive.FilesOnServer());
    }

    [Fact]
    public void NestedFoldersAreMadeOnBothSidesOnce()
    {
        var made = _home.Service.GetOrCreateFolder(_drive.Root.Id, @"a/b\c");
        File.WriteAllText(_drive.InWorkspace("a/b/c/x.txt"), "x");
        var again = _home.Service.GetOrCreateFolder(_drive.Item("a").Id, "b/c");

        Assert.True(made is { IsFolder: true, IsInWorkspace: true, IsOnServer: true, RelativePath: @"a\b\c", Name: "c" });
        Assert.Equal(made.RelativePath, again.RelativePath);
        Assert.True(Directory.Exists(_drive.OnServer("a/b/c")));
        Assert.True(File.Exists(_drive.InWorkspace("a/b/c/x.txt")));
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AFolderThatIsOnOneSideIsMadeOnTheOtherOne(bool isInWorkspace)
    {
        Directory.CreateDirectory(isInWorkspace ? _drive.InWorkspace("a") : _drive.OnServer("a"));

        var made = _home.Service.GetOrCreateFolder(_drive.Root.Id, "a");

        Assert.True(made is { IsFolder: true, IsInWorkspace: true, IsOnServer: true });
        Assert.True(Directory.Exists(_drive.InWorkspace("a")) && Directory.Exists(_drive.OnServer("a")));
    }

    [Fact]
    public void AFolderThatIsOnOneSideOfAReadOnlyDriveIsFound()
    {
        Directory.CreateDirectory(_drive.InWorkspace("a"));
        _home.Configure(_drive, "writable", false);

        Assert.True(_home.Service.GetOrCreateFolder(_drive.Root.Id, "a") is { IsInWorkspace: true, IsOnServer: false });
        Assert.False(Directory.Exists(_drive.OnServer("a")));
    }

    [Fact]
    public void AFolderCannotBeCreatedInPlaceOfAFileNorBelowOneNorWithoutAName()
    {
        _drive.PutOnServer("file.txt");

        Assert.Contains("is a file", Assert.Throws<IOException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, "file.txt")).Message);
        Assert.Contains("is a file", Assert.Throws<IOException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, "file.txt/sub")).Message);
        foreach (var name in new[] { "", "/", "..", "a/../b", null })
            Assert.Throws<ArgumentException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, name!));
        _home.Configure(_drive, "writable", false);
        Assert.Contains("read-only", Assert.Throws<UnauthorizedAccessException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, "n")).Message);
    }
}
