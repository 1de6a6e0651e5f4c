using System.Text.Json;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>The property that says what a sync would do.</summary>
public sealed class SyncPlanTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public SyncPlanTests()
    {
        _drive = _home.AddDrive();
        foreach (var name in new[] { "here.txt", "there.txt", "both.txt", "moved.txt", "p/x.txt" })
            _drive.PutBoth(name, name);
        Assert.True(_drive.Sync("").IsSuccess);
    }

    public void Dispose() => _home.Dispose();

    [Fact]
    public void NamesWhatTheSyncThenDoesAndChangesNothing()
    {
        _drive.PutInWorkspace("here.txt", "mine", 3);
        _drive.PutOnServer("there.txt", "theirs", 3);
        _drive.PutInWorkspace("both.txt", "mine", 3);
        _drive.PutOnServer("both.txt", "theirs", 4);
        _drive.PutInWorkspace("equal.txt", "equal", 3);
        _drive.PutOnServer("equal.txt", "equal", 4);
        _drive.PutInWorkspace("new/deep.txt");
        File.Move(_drive.InWorkspace("moved.txt"), _drive.InWorkspace("elsewhere.txt"));
        Directory.Move(_drive.OnServer("p"), _drive.OnServer("q"));

        var plan = Plan("");

        Assert.Equal(["both.txt", "equal.txt", "here.txt", "moved.txt", "new/deep.txt", "p/x.txt", "there.txt"], Names("elsewhere.txt", "moved.txt"));
        Assert.Equal(["both.txt", "equal.txt", "here.txt", "moved.txt", "q/x.txt", "there.txt"], _drive.FilesOnServer());
        RequireThatTheSyncDoesAsPlanned();
        Assert.Equal(
            [
                @"downloaded both.txt", @"downloaded there.txt", @"kept-twice both (conflict 2024-05-01 100300).txt", @"renamed elsewhere.txt", @"renamed q",
                @"uploaded here.txt", @"uploaded new", @"uploaded new\deep.txt",
            ],
            plan.Order(StringComparer.Ordinal));
        Assert.Empty(Plan(""));
    }

    [Fact]
    public void IsAboutTheItemThatIsAskedAbout()
    {
        _drive.PutInWorkspace("here.txt", "mine", 3);
        _drive.PutInWorkspace("p/x.txt", "mine", 3);

        Assert.Equal([@"uploaded p\x.txt"], Plan("p"));
        Assert.Equal(["uploaded here.txt"], Plan("here.txt"));
        Assert.Empty(Plan("both.txt"));
    }

    [Fact]
    public void SaysWhatWouldFailAndWhy()
    {
        _home.Configure(_drive, "ignore", new[] { "*.tmp" });
        _drive.PutInWorkspace("a.tmp");
        _drive.PutInWorkspace("clash", "a file");
        _drive.PutOnServer("clash/x.txt");

        var failure = Assert.Single(Plan(""));

        Assert.Contains("clash is a file on one side and a folder on the other", failure.Replace("'", ""));
        Assert.Contains("is left out by the pattern '*.tmp'", Assert.Single(Plan("a.tmp")));
        _home.Configure(_drive, "writable", false);
        _drive.PutInWorkspace("here.txt", "mine", 3);
        Assert.Contains("is read-only", Assert.Single(Plan("here.txt")));
    }

    [Fact]
    public void ReadsTheFilesOfAFolderThatIsNoLongerLeftOutWhereTheyAre()
    {
        _drive.PutBoth("p/build/y.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        _home.Configure(_drive, "ignore", new[] { "p/build/" });
        _drive.PutInWorkspace("p/build/y.txt", "equal", 3);
        _drive.PutOnServer("p/build/y.txt", "equal", 4);
        Directory.Move(_drive.InWorkspace("p"), _drive.InWorkspace("q"));

        Assert.Equal(["renamed q"], Plan(""));

        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Contains("q/build/y.txt", _drive.FilesOnServer());
        Assert.Empty(Plan(""));
    }

    [Fact]
    public void ForeseesWhatIsInTheFoldersOfAFolderThatIsNoLongerLeftOut()
    {
        _drive.PutBoth("p/build/deep/y.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        _home.Configure(_drive, "ignore", new[] { "p/build/" });
        _drive.PutOnServer("p/build/deep/deeper/new.txt");
        Directory.Move(_drive.InWorkspace("p"), _drive.InWorkspace("q"));

        Assert.Contains("downloaded q\\build\\deep\\deeper\\new.txt", Plan(""));
        RequireThatTheSyncDoesAsPlanned();
        Assert.Contains("q/build/deep/deeper/new.txt", _drive.FilesInWorkspace());
        Assert.Empty(Plan(""));
    }

    [Fact]
    public void ForeseesThatAMoveMeetsAFileThatWasLeftOut()
    {
        _drive.PutBoth("r/d/y.txt", "synced");
        Assert.True(_drive.Sync("").IsSuccess);
        _home.Configure(_drive, "ignore", new[] { "r/d/" });
        _drive.PutOnServer("r/d/x.txt", "in the way");
        Directory.Move(_drive.InWorkspace("r"), _drive.InWorkspace("s"));
        File.Move(_drive.InWorkspace("p/x.txt"), _drive.InWorkspace("s/d/x.txt"));

        RequireThatTheSyncDoesAsPlanned();
        Assert.Empty(Plan(""));
    }

    [Fact]
    public void ItIsNoPropertyThatIsAskedForWithAllOthers() =>
        Assert.DoesNotContain("SyncPlan", _home.Service.GetPropertyDefinitions(_drive.Id).Select(definition => definition.Id));

    // The files of the workspace, one of them under its earlier name.
    private IEnumerable<string> Names(string now, string before) =>
        _drive.FilesInWorkspace().Select(name => name == now ? before : name).Order(StringComparer.Ordinal);

    private List<string> Plan(string path)
    {
        var id = path.Length == 0 ? _drive.Root.Id : _drive.Item(path).Id;
        var list = (string)_home.Service.GetProperties([id], ["SyncPlan"]).Values.Single().Value;
        return JsonDocument.Parse(list).RootElement.EnumerateArray().Select(
            item => item.TryGetProperty("error", out var error)
                ? $"{item.GetProperty("path")}: {error}"
                : $"{item.GetProperty("action")} {item.GetProperty("path")}").ToList();
    }

    private void RequireThatTheSyncDoesAsPlanned()
    {
        var plan = Plan("").Order(StringComparer.Ordinal).ToList();
        var result = _drive.Sync("");
        Assert.True(result.IsSuccess);
        var done = result.ItemsUpdated.Where(item => ActionOf(item) is not null).Select(item => $"{ActionOf(item)} {item.RelativePath}")
            .Concat(result.ItemsCreated.Select(item => $"kept-twice {item.RelativePath}"));
        Assert.Equal(done.Order(StringComparer.Ordinal), plan);
    }

    private string? ActionOf(Item item) => (string?)_home.Service.GetProperties([item.Id], ["SyncAction"]).Values.SingleOrDefault()?.Value;
}
