namespace Quorvex.Tessaport.API.Tests;

public sealed class ListingTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public ListingTests() => _drive = _home.AddDrive(locking: true, name: "Harbour");

    public void Dispose() => _home.Dispose();

    [Fact]
    public void DrivesComeInTheOrderOfTheConfiguration()
    {
        _home.AddDrive("TrelisDocs", name: "B");
        _home.AddDrive("Morrow", name: "A");

        var drives = _home.Service.GetDrives().ToList();

        Assert.Equal(["Harbour", "B", "A"], drives.Select(drive => drive.Name));
        Assert.Equal("Quorvex.DataSourceType.TrelisDocs", drives[1].DriveType);
        Assert.Equal([true, false, false], drives.Select(drive => drive.DriveCapabilites.Locking));
        Assert.Equal(_drive.Workspace.Replace('/', '\\'), drives[0].WorkspaceLocation);
        Assert.Equal(drives[0].WorkspaceLocation, drives[0].Root.WorkspacePath);
        Assert.True(drives[0].Root is { IsFolder: true, IsInWorkspace: true, IsOnServer: true, Name: "Harbour", RelativePath: "" });
    }

    [Fact]
    public void AFolderShowsBothSidesTogetherByName()
    {
        _drive.PutBoth("both.txt");
        _drive.PutInWorkspace("Local.txt", minutes: 5);
        _drive.PutOnServer("remote.txt", minutes: 7);
        _drive.PutOnServer("local.txt");
        _drive.PutInWorkspace("a folder/x.txt");

        var items = _home.Service.GetFolderContents(_drive.Root.Id).ToList();

        var expected = OperatingSystem.IsWindows()
            ? new[] { "a folder", "both.txt", "Local.txt", "remote.txt" }
            : ["a folder", "both.txt", "Local.txt", "local.txt", "remote.txt"];
        Assert.Equal(expected, items.Select(item => item.Name));
        Assert.True(items[0] is { IsFolder: true, IsInWorkspace: true, IsOnServer: false });
        Assert.True(items[1] is { IsFolder: false, IsInWorkspace: true, IsOnServer: true });
        Assert.True(items[^1] is { IsFolder: false, IsInWorkspace: false, IsOnServer: true });
        Assert.Equal(new DateTime(2024, 5, 1, 10, 7, 0, DateTimeKind.Utc), items[^1].LastModifiedDate);
        Assert.Equal(DateTimeKind.Utc, items[^1].LastModifiedDate.Kind);
        Assert.Equal(_drive.WorkspacePath("remote.txt"), items[^1].WorkspacePath);
    }

    [Fact]
    public void ChildFoldersAreTheFoldersOnly()
    {
        _drive.PutBoth("sub/inner/x.txt");
        _drive.PutOnServer("only on server/y.txt");
        _drive.PutBoth("file.txt");

        Assert.Equal(["only on server", "sub"], _home.Service.GetChildFolders(_drive.Root.Id).Select(item => item.Name));
        var inner = Assert.Single(_home.Service.GetChildFolders(_drive.Item("sub").Id));
        Assert.Equal(@"sub\inner", inner.RelativePath);
    }

    [UnixFact]
    public void ItemsThatCannotBeReportedFaithfullyAreLeftOut()
    {
        _drive.PutInWorkspace("plain.txt");
        File.WriteAllText(_drive.InWorkspace("back\\slash.txt"), "x");
        File.CreateSymbolicLink(_drive.InWorkspace("link"), "/etc");
        Directory.CreateDirectory(_drive.InWorkspace(".tessaport-like"));

        Assert.Equal([".tessaport-like", "plain.txt"], _home.Service.GetFolderContents(_drive.Root.Id).Select(item => item.Name));
    }

    [Fact]
    public void ANullOrForeignIdIsRefusedWithAMessage()
    {
        Assert.Contains("missing", Assert.Throws<ArgumentException>(() => _home.Service.GetFolderContents(null!)).Message);
        Assert.Contains("not made by this service", Assert.Throws<ArgumentException>(() => _home.Service.GetFolderContents(new ItemId())).Message);
        Assert.Throws<ArgumentException>(() => _home.Service.GetPermanentIds([new ItemId()]));
    }

    [Fact]
    public void AFileAndAMissingFolderCannotBeListed()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("gone/b.txt");
        var gone = _drive.Item("gone");
        Directory.Delete(_drive.InWorkspace("gone"), true);
        Directory.Delete(_drive.OnServer("gone"), true);

        Assert.Contains("is a file", Assert.Throws<ArgumentException>(() => _home.Service.GetFolderContents(_drive.Item("a.txt").Id)).Message);
        Assert.Contains("no longer exists", Assert.Throws<DirectoryNotFoundException>(() => _home.Service.GetFolderContents(gone.Id)).Message);
    }

    [Fact]
    public void PathsWithEitherSlashAreFound()
    {
        _drive.PutBoth("sub/é 漢.txt");
        string[] paths =
        [
            _drive.WorkspacePath("sub/é 漢.txt"),
            _drive.InWorkspace("sub/é 漢.txt"),
            _drive.InWorkspace("sub/./x/../é 漢.txt"),
            _drive.WorkspacePath("sub") + "\\",
            _drive.Workspace,
        ];

        var results = _home.Service.GetItemsByWorkspacePaths([.. paths]).ToList();

        Assert.Equal(paths, results.Select(result => result.WorkspacePath));
        Assert.All(results, result => Assert.Equal(Result.Success, result.Result));
        Assert.Equal([@"sub\é 漢.txt", @"sub\é 漢.txt", @"sub\é 漢.txt", "sub", ""], results.Select(result => result.Item.RelativePath));
    }

    [UnixFact]
    public void PathsThroughLinksLeadToTheItemsRealPath()
    {
        _drive.PutBoth("sub/a.txt");
        var link = Path.Combine(_home.Root, "link");
        File.CreateSymbolicLink(link, _drive.Workspace);
        _home.Configure(_drive, "workspace", link);

        Assert.Equal(_drive.Workspace.Replace('/', '\\'), _drive.Root.WorkspacePath);
        foreach (var root in new[] { link, _drive.Workspace })
        {
            var result = _home.Service.GetItemsByWorkspacePaths([Path.Combine(root, "sub/a.txt")]).Single();
            Assert.Equal(_drive.WorkspacePath("sub/a.txt"), result.Item.WorkspacePath);
        }
    }

    [Fact]
    public void PathsOutsideWorkspacesAreNotFound()
    {
        var long1 = _drive.InWorkspace(new string('x', 5000));
        string[] paths =
        [
            _drive.InWorkspace("absent.txt"), "/", "", "relative.txt", _drive.Workspace + "2", "\ud800", _drive.InWorkspace("a\ud800"),
            _drive.InWorkspace("a\0b"), long1, _drive.Server, null!,
        ];

        var results = _home.Service.GetItemsByWorkspacePaths([.. paths]).ToList();

        Assert.Equal(paths.Length, results.Count);
        Assert.All(results, result => Assert.Equal((Result)2, result.Result));
        Assert.All(results, result => Assert.Null(result.Item));
        Assert.All(results, result => Assert.NotNull(result.WorkspacePath));
    }

    [Fact]
    public void RelativePathsGiveTheItemsThatExist()
    {
        _drive.PutOnServer("a/b.txt");

        var items = _home.Service.GetItemsByRelativePaths(_drive.Id, [@"a\b.txt", "none", "a/b.txt", @"\a\", "..", ""]).ToList();

        Assert.Equal([@"a\b.txt", @"a\b.txt", "a", ""], items.Select(item => item.RelativePath));
        Assert.Throws<ArgumentException>(() => _home.Service.GetItemsByRelativePaths(Guid.NewGuid(), []));
    }

    [Fact]
    public void AnswersAboutTheWorkspaceAreKeyedByTheGivenStrings()
    {
        _drive.PutInWorkspace("here.txt");
        _drive.PutOnServer("there.txt");
        List<string> paths =
            [_drive.WorkspacePath("here.txt"), _drive.WorkspacePath("here.txt").Replace('\\', '/'), _drive.InWorkspace("there.txt"), "x",
                _drive.WorkspacePath("here.txt")];

        var answers = _home.Service.AreFilesInWorkspace(paths);

        Assert.Equal(4, answers.Count);
        Assert.True(answers[paths[0]] && answers[paths[1]]);
        Assert.False(answers[paths[2]] || answers["x"]);
        Assert.Throws<ArgumentException>(() => _home.Service.AreFilesInWorkspace([null!]));
    }

    [Fact]
    public void AnOfflineDriveAnswersOfflineForItsKeys()
    {
        _drive.PutBoth("a.txt");
        var other = _home.AddDrive();
        other.PutBoth("b.txt");
        var (a, b) = (_drive.Item("a.txt"), other.Item("b.txt"));
        var permanentId = _drive.PermanentId("a.txt");
        _home.Configure(_drive, "offline", true);

        Assert.Equal([Result.Offline, Result.Success], _home.Service.GetPermanentIds([a.Id, b.Id]).Select(result => result.Result));
        Assert.Equal([Result.Offline, Result.Success], _home.Service.GetPermanentIds([_drive.Root.Id, other.Root.Id]).Select(result => result.Result));
        Assert.Equal(Result.Offline, _home.Service.GetItemsByPermanentIds([permanentId]).Single().Result);
        Assert.Equal(
            [Result.Offline, Result.Offline, Result.Success],
            _home.Service.GetItemsByWorkspacePaths([a.WorkspacePath, _drive.Workspace, b.WorkspacePath]).Select(result => result.Result));
        Assert.Single(_home.Service.GetFolderContents(_drive.Root.Id));
        Assert.False(_home.Service.CanAddFiles(_drive.Root.Id, []));
        Assert.False(_home.Service.SyncFiles([a.Id]).IsSuccess);
        Assert.False(_home.Service.DeleteItems([a.Id]).IsSuccess);
        Assert.False(_home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "new")]).IsSuccess);
        Assert.Contains("offline", Assert.Throws<IOException>(() => _home.Service.GetOrCreateFolder(_drive.Root.Id, "n")).Message);
        Assert.Equal("content", File.ReadAllText(_drive.InWorkspace("a.txt")));
    }
}
