namespace Quorvex.Tessaport.API.Tests;

/// <summary>A program puts its own version in the place of a file while the service is about to put another one there.</summary>
public sealed class ReplacementTests : IDisposable
{
    private const string Expected = "the version that was there";
    private const string Prepared = "the version that the service brings";
    private const string Users = "the version that the user saves";

    private readonly string _folder = Directory.CreateTempSubdirectory("tessaport-files-").FullName;
    private readonly DriveSide _side;
    private readonly string _place;
    private readonly string _source;

    public ReplacementTests()
    {
        var root = Path.Combine(_folder, "side");
        Directory.CreateDirectory(Path.Combine(root, "folder"));
        _side = new DriveSide(root).Opened();
        _place = Path.Combine(root, "folder", "a.txt");
        _source = Path.Combine(_folder, "source.txt");
        File.WriteAllText(_source, Prepared);
    }

    public void Dispose()
    {
        _side.Dispose();
        Directory.Delete(_folder, recursive: true);
    }

    [Theory]
    [MemberData(nameof(Without.RenamingFeatures), MemberType = typeof(Without))]
    public void AFileThatIsAsExpectedIsReplaced(string features)
    {
        File.WriteAllText(_place, Expected);
        using var without = new Without(features);

        var placed = Commit(_side.Find(@"folder\a.txt"));

        Assert.Equal(Prepared, File.ReadAllText(_place));
        Assert.Equal(_side.Find(@"folder\a.txt"), placed);
        Assert.Equal([Prepared], Contents());
    }

    [Theory]
    [MemberData(nameof(Without.RenamingFeatures), MemberType = typeof(Without))]
    public void ANewFileIsPlaced(string features)
    {
        using var without = new Without(features);

        Commit(expected: null);

        Assert.Equal([Prepared], Contents());
    }

    [Theory]
    [MemberData(nameof(Without.RenamingFeatures), MemberType = typeof(Without))]
    public void AFileThatIsNotTheExpectedVersionStays(string features)
    {
        File.WriteAllText(_place, Expected);
        var expected = _side.Find(@"folder\a.txt");
        File.WriteAllText(_place, Users);
        using var without = new Without(features);

        Assert.Throws<ChangedException>(() => Commit(expected));

        Assert.Equal(Users, File.ReadAllText(_place));
    }

    [UnixFact]
    public void AnEditThatKeepsSizeAndTimeIsAnotherVersion()
    {
        File.WriteAllText(_place, Expected);
        var expected = _side.Find(@"folder\a.txt");
        var time = File.GetLastWriteTimeUtc(_place);
        var edited = Expected.ToUpperInvariant();
        File.WriteAllText(_place, edited);
        File.SetLastWriteTimeUtc(_place, time);

        Assert.Throws<ChangedException>(() => Commit(expected));

        Assert.Equal(edited, File.ReadAllText(_place));
    }

    [Theory]
    [MemberData(nameof(Without.RenamingFeatures), MemberType = typeof(Without))]
    public void AFileThatAppearsWhereNoneWasExpectedStays(string features)
    {
        using var without = new Without(features);
        using var user = StepAction.At("Commit.Checked", "a.txt", SaveByRenaming);

        Assert.Throws<ChangedException>(() => Commit(expected: null));

        Assert.Equal([Users], Contents());
    }

    [Fact]
    public void AFileThatIsBeingReplacedCannotBeReplacedByAnotherProgramOnWindows()
    {
        Assert.SkipUnless(OperatingSystem.IsWindows(), "Elsewhere it can, and the other program's version stays.");
        File.WriteAllText(_place, Expected);
        using var user = StepAction.At("Commit.Guarded", "a.txt", path =>
            Assert.Throws<UnauthorizedAccessException>(() => SaveByRenaming(path)));

        Commit(_side.Find(@"folder\a.txt"));

        Assert.True(user.WasReached);
        Assert.Equal(Prepared, File.ReadAllText(_place));
    }

    [UnixTheory]
    [InlineData("Commit.Checked", "None")]
    [InlineData("Commit.Checked", "Leases")]
    [InlineData("Commit.Checked", "Exchanging")]
    [InlineData("Commit.Guarded", "None")]
    [InlineData("Commit.Guarded", "Leases")]
    [InlineData("Commit.Guarded", "Exchanging")]
    [InlineData("Commit.Guarded", "RenamingWithoutReplacing, Exchanging, HardLinks")]
    public void AVersionSavedByRenamingBeforeTheReplacementStays(string step, string features)
    {
        File.WriteAllText(_place, Expected);
        using var without = new Without(features);
        using var user = StepAction.At(step, "a.txt", SaveByRenaming);

        Assert.Throws<ChangedException>(() => Commit(_side.Find(@"folder\a.txt")));

        Assert.True(user.WasReached);
        Assert.Equal([Users], Contents());
    }

    [UnixFact]
    public void AVersionSavedByRenamingAfterTheReplacementStaysAndSoDoesTheOneBefore()
    {
        File.WriteAllText(_place, Expected);
        var expected = _side.Find(@"folder\a.txt");
        var other = "a version saved in between";
        Step.Hook = (step, path) =>
        {
            if (step == "Commit.Guarded")
                SaveByRenaming(path, other);
            else if (step == "Commit.Exchanged")
                SaveByRenaming(path);
        };
        try
        {
            Assert.Throws<ChangedException>(() => Commit(expected));
        }
        finally
        {
            Step.Hook = null;
        }

        Assert.Equal(new[] { other, Users }.Order(), Contents());
    }

    [UnixFact]
    public void AVersionRemovedAfterTheReplacementLeavesTheOneThatCameOut()
    {
        File.WriteAllText(_place, Expected);
        var expected = _side.Find(@"folder\a.txt");
        Step.Hook = (step, path) =>
        {
            if (step == "Commit.Guarded")
                SaveByRenaming(path);
            else if (step == "Commit.Exchanged")
                File.Delete(path);
        };
        try
        {
            Assert.Throws<ChangedException>(() => Commit(expected));
        }
        finally
        {
            Step.Hook = null;
        }

        Assert.Equal([Users], Contents());
    }

    [Fact]
    public void AFileSavedIntoTheGapStaysWhereFilesCannotBeExchanged()
    {
        File.WriteAllText(_place, Expected);
        using var without = new Without(OperatingSystem.IsWindows() ? "None" : "Exchanging");
        using var user = StepAction.At("Commit.SetAside", "a.txt", SaveByRenaming);

        Assert.Throws<ChangedException>(() => Commit(_side.Find(@"folder\a.txt")));

        Assert.Equal(new[] { Expected, Users }.Order(), Contents());
    }

    [Theory]
    [InlineData("None")]
    [InlineData("Exchanging")]
    public void AFileThatIsOpenForWritingElsewhereIsNotReplaced(string features)
    {
        File.WriteAllText(_place, Expected);
        using var without = new Without(OperatingSystem.IsWindows() ? "None" : features);
        using (var writer = new FileStream(_place, FileMode.Open, FileAccess.Write, FileShare.ReadWrite | FileShare.Delete))
        {
            Assert.Contains("open for writing", Assert.Throws<ChangedException>(() => Commit(_side.Find(@"folder\a.txt"))).Message);
            writer.Write("THE"u8);
        }

        Assert.Equal([Expected.Replace("the version", "THE version")], Contents());
    }

    [UnixFact]
    public void AFolderOrLinkThatTookThePlaceStays()
    {
        File.WriteAllText(_place, Expected);
        var expected = _side.Find(@"folder\a.txt");
        using (StepAction.At("Commit.Guarded", "a.txt", path =>
        {
            File.Delete(path);
            File.CreateSymbolicLink(path, _source);
        }))
        {
            Assert.Throws<ChangedException>(() => Commit(expected));
        }

        Assert.Equal(_source, new FileInfo(_place).LinkTarget);
        Assert.Throws<ChangedException>(() => Commit(expected: null));
        Assert.Equal(_source, new FileInfo(_place).LinkTarget);
    }

    [Fact]
    public void AnItemThatIsNotTheExpectedOneIsNotMovedAside()
    {
        File.WriteAllText(_place, Expected);
        var expected = _side.Find(@"folder\a.txt")!.Value;
        using (var user = StepAction.At("Remove.Checked", "a.txt", SaveByRenaming))
            Assert.Throws<ChangedException>(() => _side.MoveAside(@"folder\a.txt", expected));
        Assert.Equal([Users], Contents());

        Assert.Throws<ChangedException>(() => _side.MoveAside(@"folder\a.txt", expected));
        _side.MoveAside(@"folder\a.txt", _side.Find(@"folder\a.txt")!.Value);
        _side.ClearStaging();
        Assert.Empty(Contents());
    }

    [Theory]
    [MemberData(nameof(Without.RenamingFeatures), MemberType = typeof(Without))]
    public void ARenameReplacesNothing(string features)
    {
        File.WriteAllText(_place, Expected);
        File.WriteAllText(_place + "2", Users);
        Directory.CreateDirectory(Path.Combine(_side.Root, "other"));
        using var without = new Without(features);

        Assert.Throws<ChangedException>(() => _side.Move(@"folder\a.txt", @"folder\a.txt2"));
        Assert.Throws<ChangedException>(() => _side.Move("other", "folder"));
        Assert.Equal(new[] { Expected, Users }.Order(), Contents());

        _side.Move("folder", @"other\moved");
        Assert.True(File.Exists(Path.Combine(_side.Root, "other", "moved", "a.txt")));
    }

    private FileEntry Commit(FileEntry? expected)
    {
        using var copy = StagedCopy.Make(FileSource.Outside(_source), _side);
        return copy.Commit(0, _side, @"folder\a.txt", expected);
    }

    private void SaveByRenaming(string path) => SaveByRenaming(path, Users);

    private static void SaveByRenaming(string path, string content)
    {
        File.WriteAllText(path + ".new", content);
        File.Move(path + ".new", path, overwrite: true);
    }

    /// <summary>The contents of all files of the side once what was prepared is gone.</summary>
    private string[] Contents()
    {
        _side.ClearStaging();
        return [.. Directory.GetFiles(_side.Root, "*", SearchOption.AllDirectories).Select(File.ReadAllText).Order()];
    }
}
