namespace Quorvex.Tessaport.API.Tests;

/// <summary>Work that the service does before a request, and that can fail without the request.</summary>
public sealed class UpkeepTests : IDisposable
{
    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AStateFolderThatIsAFileIsReportedByTheDrivesAndFailsNoListing()
    {
        var drives = new[] { _home.AddDrive(), _home.AddDrive(offline: true) };
        var state = Path.Combine(_home.Root, "state");
        drives[0].PutBoth("a.txt");
        File.WriteAllText(state, "mine");

        Assert.Single(_home.Service.GetFolderContents(drives[0].Root.Id));
        foreach (var drive in drives)
        {
            Assert.Contains(state, UpkeepErrorOf(drive));
            Assert.Contains("is not a folder", UpkeepErrorOf(drive));
        }

        File.Delete(state);
        Assert.Null(UpkeepErrorOf(drives[0]));
    }

    [Fact]
    public void AFailureOfOneDriveIsItsOwnAndTheOthersAreTidiedUp()
    {
        var (broken, sound) = (_home.AddDrive(), _home.AddDrive());
        Directory.Delete(broken.Workspace);
        File.WriteAllText(broken.Workspace, "mine");

        _home.Service.Discover();

        Assert.True(File.Exists(Path.Combine(_home.Root, "state", sound.Id + ".json")));
        Assert.Null(Upkeep.FailureOf(HomeFolder.Locate(), sound.Id));
        Assert.Contains(broken.Workspace, Upkeep.FailureOf(HomeFolder.Locate(), broken.Id));
        Assert.Equal("mine", File.ReadAllText(broken.Workspace));
    }

    [Fact]
    public void ALockFileThatCannotBeUsedIsReported()
    {
        var drive = _home.AddDrive();
        Directory.CreateDirectory(Path.Combine(_home.Root, "lock"));

        Assert.Contains(Path.Combine(_home.Root, "lock"), UpkeepErrorOf(drive));
    }

    private string? UpkeepErrorOf(TestDrive drive) =>
        (string?)_home.Service.GetProperties([drive.Root.Id], ["UpkeepError"]).Values.SingleOrDefault()?.Value;
}
