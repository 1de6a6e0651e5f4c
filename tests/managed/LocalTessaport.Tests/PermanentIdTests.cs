namespace Quorvex.Tessaport.API.Tests;

public sealed class PermanentIdTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public PermanentIdTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AnIdIsTheSameEachTimeAndLeadsBack()
    {
        _drive.PutBoth("a.txt");
        _drive.PutOnServer("sub/b.txt");
        string[] paths = ["a.txt", "sub", "sub/b.txt", ""];

        var ids = paths.Select(_drive.PermanentId).ToList();

        Assert.Equal(4, ids.Distinct().Count());
        Assert.Equal(ids, paths.Select(_drive.PermanentId));
        Assert.Equal(["a.txt", "sub", @"sub\b.txt", ""], ids.Select(_drive.PathOf));
    }

    [Fact]
    public void AnswersComeInTheOrderOfTheKeys()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");
        var (a, b) = (_drive.Item("a.txt"), _drive.Item("b.txt"));
        var idOfB = _drive.PermanentId("b.txt");
        File.Delete(_drive.InWorkspace("a.txt"));
        File.Delete(_drive.OnServer("a.txt"));

        var byItem = _home.Service.GetPermanentIds([a.Id, b.Id, a.Id]).ToList();
        var byId = _home.Service.GetItemsByPermanentIds(["", idOfB, "a/b", "tp." + new string('0', 32) + "." + new string('1', 32), null!]).ToList();

        Assert.Equal([(Result)2, Result.Success, (Result)2], byItem.Select(result => result.Result));
        Assert.Same(b.Id, byItem[1].ItemId);
        Assert.Null(byItem[0].PermanentId);
        Assert.Equal([(Result)2, Result.Success, (Result)2, (Result)2, (Result)2], byId.Select(result => result.Result));
        Assert.Equal("a/b", byId[2].PermanentId);
        Assert.Equal("", byId[4].PermanentId);
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AnIdSurvivesRenamesAndMovesInTheFileSystem(bool inWorkspace)
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("folder/b.txt");
        var (a, b, folder) = (_drive.PermanentId("a.txt"), _drive.PermanentId("folder/b.txt"), _drive.PermanentId("folder"));
        var side = inWorkspace ? _drive.Workspace : _drive.Server;
        Directory.Move(Path.Combine(side, "folder"), Path.Combine(side, "moved"));
        File.Move(Path.Combine(side, "a.txt"), Path.Combine(side, "moved/c.txt"));
        if (!inWorkspace)
        {
            File.Delete(_drive.InWorkspace("a.txt"));
            Directory.Delete(_drive.InWorkspace("folder"), true);
        }

        Assert.Equal([@"moved\c.txt", @"moved\b.txt", "moved"], new[] { a, b, folder }.Select(_drive.PathOf));
        Assert.Equal(a, _drive.PermanentId("moved/c.txt"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal([@"moved\c.txt", @"moved\b.txt", "moved"], new[] { a, b, folder }.Select(_drive.PathOf));
        Assert.Equal(["moved/b.txt", "moved/c.txt"], _drive.FilesOnServer());
        Assert.Equal(["moved/b.txt", "moved/c.txt"], _drive.FilesInWorkspace());
    }

    [Fact]
    public void AnIdStaysWithAFileThatIsSavedByReplacingIt()
    {
        _drive.PutBoth("a.txt");
        var id = _drive.PermanentId("a.txt");
        _drive.PutInWorkspace("a.txt.new", "saved", 3);
        File.Move(_drive.InWorkspace("a.txt.new"), _drive.InWorkspace("a.txt"), overwrite: true);

        Assert.Equal(id, _drive.PermanentId("a.txt"));
        _drive.Sync("a.txt");
        Assert.Equal(id, _drive.PermanentId("a.txt"));
        Assert.Equal("a.txt", _drive.PathOf(id));
    }

    [Fact]
    public void ANewFileInAnOldPlaceIsAnotherItem()
    {
        _drive.PutBoth("a.txt");
        var id = _drive.PermanentId("a.txt");
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        _drive.PutInWorkspace("a.txt", "another");

        Assert.Equal("b.txt", _drive.PathOf(id));
        Assert.NotEqual(id, _drive.PermanentId("a.txt"));
        Assert.Equal(id, _drive.PermanentId("b.txt"));
    }

    [Fact]
    public void IdsFollowTwoFilesThatSwapTheirNames()
    {
        _drive.PutInWorkspace("a.txt");
        _drive.PutInWorkspace("b.txt");
        var (a, b) = (_drive.PermanentId("a.txt"), _drive.PermanentId("b.txt"));
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("t"));
        File.Move(_drive.InWorkspace("b.txt"), _drive.InWorkspace("a.txt"));
        File.Move(_drive.InWorkspace("t"), _drive.InWorkspace("b.txt"));

        Assert.Equal(["b.txt", "a.txt"], new[] { a, b }.Select(_drive.PathOf));
        Assert.Equal([b, a], new[] { "a.txt", "b.txt" }.Select(_drive.PermanentId));
    }

    [Fact]
    public void ARenameFollowedByASaveIsFollowedOnceItWasSeen()
    {
        _drive.PutInWorkspace("a.txt");
        var id = _drive.PermanentId("a.txt");
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        Assert.Equal("b.txt", _drive.PathOf(id));
        _drive.PutInWorkspace("b.txt.new", "saved", 3);
        File.Move(_drive.InWorkspace("b.txt.new"), _drive.InWorkspace("b.txt"), overwrite: true);

        Assert.Equal("b.txt", _drive.PathOf(id));
    }

    [Fact]
    public void AFileThatComesBackAsACopyIsKnownByItsContent()
    {
        _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "unmistakable")]);
        var id = _drive.PermanentId("a.txt");
        Directory.CreateDirectory(_drive.InWorkspace("elsewhere"));
        File.Copy(_drive.InWorkspace("a.txt"), _drive.InWorkspace("elsewhere/z.txt"));
        File.Delete(_drive.InWorkspace("a.txt"));
        File.Delete(_drive.OnServer("a.txt"));

        Assert.Equal(@"elsewhere\z.txt", _drive.PathOf(id));
    }

    [Fact]
    public void ADeletedItemsIdLeadsNowhere()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");
        var id = _drive.PermanentId("a.txt");
        _home.Service.DeleteItems([_drive.Item("a.txt").Id]);

        Assert.Null(_drive.PathOf(id));
        _drive.PutBoth("a.txt", "another");
        Assert.NotEqual(id, _drive.PermanentId("a.txt"));
    }

    [Fact]
    public void HardLinksAreDifferentItems()
    {
        _drive.PutInWorkspace("a.txt");
        HardLink.Make(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));

        var (a, b) = (_drive.PermanentId("a.txt"), _drive.PermanentId("b.txt"));

        Assert.NotEqual(a, b);
        Assert.Equal(a, _drive.PermanentId("a.txt"));
        Assert.Equal(["a.txt", "b.txt"], new[] { a, b }.Select(_drive.PathOf));
    }

    [Fact]
    public void UnreadableStateNamesTheFileAndTheRemedy()
    {
        _drive.PutBoth("a.txt");
        _drive.PermanentId("a.txt");
        var file = Directory.GetFiles(Path.Combine(_home.Root, "state")).Single();
        File.WriteAllText(file, "{");

        var thrown = Assert.Throws<InvalidDataException>(() => _drive.PermanentId("a.txt"));

        Assert.Contains(file, thrown.Message);
        Assert.Contains("Remove that file", thrown.Message);
        File.Delete(file);
        Assert.StartsWith("tp.", _drive.PermanentId("a.txt"));
    }
}
