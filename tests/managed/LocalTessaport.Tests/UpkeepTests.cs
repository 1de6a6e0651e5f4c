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

        Assert.True(File.Exists(Path.Combine(_home.Root, "state", sound.Id + ".records")));
        Assert.Null(Upkeep.FailureOf(HomeFolder.Locate(), sound.Id));
        Assert.Contains(broken.Workspace, Upkeep.FailureOf(HomeFolder.Locate(), broken.Id));
        Assert.Equal("mine", File.ReadAllText(broken.Workspace));
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void ASideThatIsAFileFailsTheRequestsOfItsOwnDriveOnly(bool isWorkspace)
    {
        var (broken, sound) = (_home.AddDrive(locking: true), _home.AddDrive());
        sound.PutInWorkspace("a.txt");
        var side = isWorkspace ? broken.Workspace : broken.Server;
        Directory.Delete(side, recursive: true);
        File.WriteAllText(side, "mine");

        var drives = _home.Service.GetDrives().ToList();
        var properties = _home.Service.GetPropertyDefinitions(broken.Id).Select(property => property.Id).ToList();
        var values = _home.Service.GetProperties(drives.ConvertAll(drive => drive.Root.Id), properties).Values;
        var synced = _home.Service.SyncFiles(drives.ConvertAll(drive => drive.Root.Id));

        Assert.Equal((!isWorkspace, isWorkspace), (drives[0].Root.IsInWorkspace, drives[0].Root.IsOnServer));
        Assert.True(drives[1].Root is { IsInWorkspace: true, IsOnServer: true });
        Assert.Contains(side, Single(values, broken, "UpkeepError"));
        Assert.Equal("1", Single(values, sound, "FilesInWorkspace"));
        Assert.False(synced.IsSuccess);
        Assert.True(File.Exists(sound.OnServer("a.txt")));
        Assert.Contains(side, Assert.ThrowsAny<IOException>(() => _home.Service.GetFolderContents(drives[0].Root.Id).ToList()).Message);
        Assert.Equal("mine", File.ReadAllText(side));
    }

    [Fact]
    public void ALockFileThatCannotBeUsedIsReported()
    {
        var drive = _home.AddDrive();
        Directory.CreateDirectory(Path.Combine(_home.Root, "lock"));

        Assert.Contains(Path.Combine(_home.Root, "lock"), UpkeepErrorOf(drive));
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AFolderThatADriveHadIsMissedAndNotMadeAnew(bool isServer)
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt");
        Assert.True(drive.Sync("").IsSuccess);
        var folder = isServer ? drive.Server : drive.Workspace;
        Directory.Move(folder, folder + " elsewhere");

        Assert.False(_home.Service.SyncFiles([drive.Root.Id]).IsSuccess);
        Assert.False(Directory.Exists(folder));
        Assert.Contains($"'{folder}', a folder of the drive '{drive.Record.Name}', is missing", UpkeepErrorOf(drive));

        Directory.Move(folder + " elsewhere", folder);
        Assert.True(drive.Sync("").IsSuccess);
        Assert.Null(UpkeepErrorOf(drive));
        Assert.Equal(["a.txt"], drive.FilesOnServer());
    }

    private static string? Single(IEnumerable<PropertyValue> values, TestDrive drive, string property) =>
        values.Single(value => value.DriveId == drive.Id && value.PropertyDefinitionId == property).Value.ToString();

    private string? UpkeepErrorOf(TestDrive drive) =>
        (string?)_home.Service.GetProperties([drive.Root.Id], ["UpkeepError"]).Values.SingleOrDefault()?.Value;
}
