namespace Quorvex.Tessaport.API.Tests;

/// <summary>Which items are known as the other version of a file, of which both versions were kept.</summary>
public sealed class ConflictTests : IDisposable
{
    private const string Copy = "plans/a (conflict 2024-05-01 100300).txt";

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public ConflictTests()
    {
        _drive = _home.AddDrive();
        _drive.PutBoth("plans/a.txt", "old");
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    [Theory]
    [InlineData(3, 4, "here")]
    [InlineData(4, 3, "server")]
    public void ACopyKnowsTheOtherVersionAndWhereItIsFrom(int minutesHere, int minutesThere, string from)
    {
        MakeConflict(minutesHere, minutesThere);

        Assert.Equal(@"plans\a.txt", ValueOf(Copy, "ConflictOf"));
        Assert.Equal(from, ValueOf(Copy, "ConflictFrom"));
        Assert.Equal("in-sync", ValueOf(Copy, "SyncState"));
        Assert.Null(ValueOf("plans/a.txt", "ConflictOf"));
    }

    [Fact]
    public void ACopyStaysOneWhenItIsEditedRenamedOrMovedWithItsFolder()
    {
        MakeConflict(3, 4);
        _drive.PutInWorkspace(Copy, "merged by hand", 9);
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal(@"plans\a.txt", ValueOf(Copy, "ConflictOf"));

        Directory.Move(_drive.InWorkspace("plans"), _drive.InWorkspace("drawings"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal(@"drawings\a.txt", ValueOf(Copy.Replace("plans", "drawings"), "ConflictOf"));

        File.Move(_drive.InWorkspace(Copy.Replace("plans", "drawings")), _drive.InWorkspace("drawings/mine.txt"));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal(@"drawings\a.txt", ValueOf("drawings/mine.txt", "ConflictOf"));
    }

    [Fact]
    public void ACopyIsAnOrdinaryFileOnceTheOtherVersionIsGone()
    {
        MakeConflict(3, 4);

        Assert.True(_home.Service.DeleteItems([_drive.Item("plans/a.txt").Id]).IsSuccess);

        Assert.Null(ValueOf(Copy, "ConflictOf"));
        Assert.Null(ValueOf(Copy, "ConflictFrom"));
    }

    [Fact]
    public void ACopyIsRecognisedAfterTheRecordsWereLost()
    {
        MakeConflict(3, 4);
        Directory.Delete(Path.Combine(_home.Root, "state"), recursive: true);

        _home.Service.Discover();

        Assert.Equal(@"plans\a.txt", ValueOf(Copy, "ConflictOf"));
        Assert.Null(ValueOf(Copy, "ConflictFrom"));
    }

    [Theory]
    [InlineData("plans/a (conflict 2024-05-01 100300).txt", 7)]
    [InlineData("plans/b (conflict 2024-05-01 100300).txt", 3)]
    [InlineData("plans/a (conflict of interest).txt", 3)]
    [InlineData("plans/a (conflict 2024-05-01 100300", 3)]
    public void AFileThatIsOnlyNamedLikeACopyIsNone(string name, int minutes)
    {
        _drive.PutInWorkspace(name, "my own file", minutes);
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Null(ValueOf(name, "ConflictOf"));
    }

    private void MakeConflict(int minutesHere, int minutesThere)
    {
        _drive.PutInWorkspace("plans/a.txt", "mine", minutesHere);
        _drive.PutOnServer("plans/a.txt", "theirs", minutesThere);
        Assert.True(_drive.Sync("").IsSuccess);
    }

    private string? ValueOf(string path, string property) =>
        (string?)_home.Service.GetProperties([_drive.Item(path).Id], [property]).Values.SingleOrDefault()?.Value;
}
