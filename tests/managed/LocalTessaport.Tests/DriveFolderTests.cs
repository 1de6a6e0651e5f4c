namespace Quorvex.Tessaport.API.Tests;

/// <summary>Which folders a drive may have.</summary>
public sealed class DriveFolderTests : IDisposable
{
    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [Theory]
    [InlineData("state")]
    [InlineData("x/../state/inner")]
    [InlineData(".")]
    [InlineData("..")]
    [InlineData("lock")]
    [InlineData("drives.json")]
    [InlineData("service.json/inner")]
    [InlineData("clipboard.txt")]
    public void AFolderThatOverlapsTheServicesFilesIsRefused(string folder) => AssertRefused(folder);

    [UnixFact]
    public void TheRootOfAllFilesIsRefused() => AssertRefused("/");

    private void AssertRefused(string folder)
    {
        foreach (var side in new[] { "workspace", "server" })
        {
            var state = Directory.CreateDirectory(Path.Combine(_home.Root, "state")).FullName;
            var users = Path.Combine(state, "thesis.tmp");
            File.WriteAllText(users, "years of work");
            _home.WriteDrives($$"""[{{Drive("Thesis", side, folder)}}]""");

            var thrown = Assert.Throws<InvalidDataException>(() => _home.Service.Discover());

            Assert.Contains("drives.json", thrown.Message);
            Assert.Contains("'Thesis' overlaps", thrown.Message);
            Assert.Equal("years of work", File.ReadAllText(users));
        }
    }

    [UnixFact]
    public void LinksHideNoOverlapWithTheServicesFiles()
    {
        var elsewhere = Directory.CreateDirectory(Path.Combine(_home.Root, "elsewhere")).FullName;
        Directory.CreateSymbolicLink(Path.Combine(_home.Root, "state"), elsewhere);
        Directory.CreateSymbolicLink(Path.Combine(_home.Root, "here"), _home.Root);
        File.WriteAllText(Path.Combine(elsewhere, "thesis.tmp"), "years of work");

        foreach (var folder in new[] { "state", "elsewhere", "elsewhere/inner", "here", "here/state", "here/here/lock" })
        {
            _home.WriteDrives($$"""[{{Drive("Thesis", "workspace", folder)}}]""");
            Assert.Contains("'Thesis' overlaps", Assert.Throws<InvalidDataException>(() => _home.Service.Discover()).Message);
        }

        Assert.Equal("years of work", File.ReadAllText(Path.Combine(elsewhere, "thesis.tmp")));
    }

    [UnixFact]
    public void AHomeBehindALinkIsKnownByItsRealPath()
    {
        var link = _home.Root + "-link";
        Directory.CreateSymbolicLink(link, _home.Root);
        try
        {
            _home.WriteDrives($$"""[{{Drive("Thesis", "server", Path.Combine(_home.Root, "state"))}}]""");
            Environment.SetEnvironmentVariable("TESSAPORT_HOME", link);

            Assert.Contains("'Thesis' overlaps", Assert.Throws<InvalidDataException>(() => _home.Service.Discover()).Message);
        }
        finally
        {
            Directory.Delete(link);
        }
    }

    [Theory]
    [InlineData("a", "a/c")]
    [InlineData("a/c", "a")]
    [InlineData("a", "a")]
    [InlineData("a", "x/../a/b/c")]
    public void FoldersOfTwoDrivesDoNotOverlap(string one, string other)
    {
        // Names that sort between a folder and what it holds.
        _home.WriteDrives($"[{Drive("One", "workspace", one)},{Drive("Between", "workspace", "a b")},"
            + $"{Drive("Beside", "server", "a-b")},{Drive("Other", "server", other)}]");

        var thrown = Assert.Throws<InvalidDataException>(() => _home.Service.Discover());

        Assert.Contains("' overlap.", thrown.Message);
        Assert.Contains("'One'", thrown.Message);
        Assert.Contains("'Other'", thrown.Message);
    }

    [Fact]
    public void NeighboursWithLikeNamesAreNoOverlap()
    {
        _home.WriteDrives($"[{Drive("One", "workspace", "a")},{Drive("Two", "workspace", "a b")},{Drive("Three", "workspace", "state2")}]");

        Assert.Equal(3, _home.Service.GetDrives().Count());
    }

    [Fact]
    public void TheTimeOfTheCheckGrowsWithTheNumberOfDrives()
    {
        var drives = Enumerable.Range(0, 100_000).Select(i => new LocalDrive
        {
            Id = Guid.NewGuid(),
            Name = $"Drive {i}",
            Type = "Quorvex.DataSourceType.Drive",
            Workspace = new DriveSide(Path.Combine(_home.Root, "drives", $"{i}", "workspace")),
            Server = new DriveSide(Path.Combine(_home.Root, "drives", $"{i}", "server")),
        }).ToList();
        var taken = Stopwatch.StartNew();

        SideOverlap.RequireNone(drives, HomeFolder.Locate().OwnPaths());
        var list = new DriveList(drives);
        foreach (var drive in drives)
            Assert.Same(drive, list.Locate(Path.Combine(drive.Workspace.Root, "folder", "a.txt"))?.Drive);

        // Comparing each with each took minutes.
        Assert.True(taken.Elapsed < TimeSpan.FromSeconds(30), $"{taken.Elapsed}");
    }

    private static string Drive(string name, string member, string folder) =>
        $$"""{"id": "{{Guid.NewGuid()}}", "name": "{{name}}", "type": "Quorvex.DataSourceType.Drive", "{{member}}": {{System.Text.Json.JsonSerializer.Serialize(folder)}}}""";
}
