using System.Security.Cryptography;

namespace Quorvex.Tessaport.API.Tests;

public sealed class StagedCopyTests : IDisposable
{
    private readonly string _folder = Directory.CreateTempSubdirectory("tessaport-files-").FullName;
    private readonly string _source;
    private readonly DriveSide _one;
    private readonly DriveSide _other;

    public StagedCopyTests()
    {
        _source = Path.Combine(_folder, "source");
        File.WriteAllText(_source, "content");
        _one = NewSide("one");
        _other = NewSide("other");
    }

    public void Dispose()
    {
        _one.Dispose();
        _other.Dispose();
        Directory.Delete(_folder, recursive: true);
    }

    [Fact]
    public void ContentTimeAndHashAreThoseOfTheSource()
    {
        var content = RandomNumberGenerator.GetBytes(1_000_003);
        File.WriteAllBytes(_source, content);

        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one, _other))
        {
            Assert.Equal(Convert.ToHexString(SHA256.HashData(content)).ToLowerInvariant(), copy.Hash);
            Assert.Equal(FileProbe.Find(_source), copy.Source);
            Assert.Empty(NamesIn(_one).Concat(NamesIn(_other)));
            copy.Commit(0, _one, "a", null);
            copy.Commit(1, _other, "b", null);
        }

        Assert.Equal(content, File.ReadAllBytes(Path.Combine(_one.Root, "a")));
        Assert.Equal(content, File.ReadAllBytes(Path.Combine(_other.Root, "b")));
        Assert.Equal(FileProbe.Find(_source)!.Value.ModifiedTime, _one.Find("a")!.Value.ModifiedTime);
    }

    [Fact]
    public void ASourceThatChangesDuringTheCopyIsCopiedAgain()
    {
        using (StepAction.At("Copy.Read", "source", path => File.WriteAllText(path, "changed")))
        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one))
            copy.Commit(0, _one, "a", null);

        Assert.Equal("changed", File.ReadAllText(Path.Combine(_one.Root, "a")));
        Assert.Equal(FileProbe.Find(_source)!.Value.ModifiedTime, _one.Find("a")!.Value.ModifiedTime);
        Assert.Empty(Staged(_one));
    }

    // Windows refuses to replace a file that is being read.
    [UnixFact]
    public void ASourceReplacedByRenamingDuringTheCopyIsCopiedAgain()
    {
        using (StepAction.At("Copy.Opened", "source", path =>
        {
            File.WriteAllText(path + ".new", "another");
            File.Move(path + ".new", path, overwrite: true);
        }))
        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one))
            copy.Commit(0, _one, "a", null);

        Assert.Equal("another", File.ReadAllText(Path.Combine(_one.Root, "a")));
    }

    [UnixFact]
    public void AnEditThatKeepsSizeAndTimeDuringTheCopyIsSeen()
    {
        var time = File.GetLastWriteTimeUtc(_source);
        using (StepAction.At("Copy.Read", "source", path =>
        {
            File.WriteAllText(path, "CONTENT");
            File.SetLastWriteTimeUtc(path, time);
        }))
        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one))
            copy.Commit(0, _one, "a", null);

        Assert.Equal("CONTENT", File.ReadAllText(Path.Combine(_one.Root, "a")));
    }

    [Fact]
    public void ASourceThatGrowsDuringEachCopyEndsAsAnErrorAndLeavesNothing()
    {
        Step.Hook = (step, path) =>
        {
            if (step == "Copy.Read")
                File.AppendAllText(path, "more");
        };
        try
        {
            var failure = Assert.Throws<ChangedException>(() => StagedCopy.Make(FileSource.Outside(_source), _one, _other));
            Assert.Contains("keeps changing", failure.Message);
        }
        finally
        {
            Step.Hook = null;
        }

        Assert.Empty(Staged(_one).Concat(Staged(_other)));
    }

    [Fact]
    public void OnlyWhatWasThereAtTheStartIsCopied()
    {
        File.WriteAllBytes(_source, new byte[200_000]);
        using var input = FileSource.Outside(_source).Open();
        File.AppendAllText(_source, " and more");
        using var output = new StagedFile(_one);

        FileCopier.Copy(input, [output]);

        Assert.Equal(200_000, RandomAccess.GetLength(output.Handle));
    }

    [Fact]
    public void AnUnfinishedCopyLeavesNothing()
    {
        StagedCopy.Make(FileSource.Outside(_source), _one, _other).Dispose();

        Assert.Empty(Staged(_one).Concat(Staged(_other)));
    }

    [Fact]
    public void ACopyThatWasNotFlushedCannotTakeItsPlace()
    {
        using var copy = StagedCopy.Prepare(FileSource.Outside(_source), _one);

        Assert.Throws<InvalidOperationException>(() => copy.Commit(0, _one, "a", null));
    }

    [Fact]
    public void ManyCopiesAreFlushedTogether()
    {
        var copies = Enumerable.Range(0, 40).Select(_ => StagedCopy.Prepare(FileSource.Outside(_source), _one, _other)).ToList();

        StagedCopy.Flush(copies);
        for (var i = 0; i < copies.Count; ++i)
        {
            copies[i].Commit(0, _one, $"{i}", null);
            copies[i].Commit(1, _other, $"{i}", null);
            copies[i].Dispose();
        }

        Assert.Equal(40, NamesIn(_one).Length);
        Assert.Equal(NamesIn(_one), NamesIn(_other));
    }

    [UnixTheory]
    [InlineData(0)]
    [InlineData(256 << 20)]
    public void HolesStayHoles(long dataAt)
    {
        const long size = 512L << 20;
        using (var file = new FileStream(_source, FileMode.Create))
        {
            file.SetLength(size);
            file.Seek(dataAt, SeekOrigin.Begin);
            file.Write("between holes"u8);
        }

        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one))
        {
            Assert.Equal(FileContent.Hash(FileSource.Outside(_source)), copy.Hash);
            copy.Commit(0, _one, "a", null);
        }

        Assert.Equal(size, _one.Find("a")!.Value.Size);
        Assert.InRange(UnixCalls.BytesOnDisk(Path.Combine(_one.Root, "a")), 1, 1 << 20);
    }

    [UnixFact]
    public void ThePermissionsTravelWithoutTheBitsThatGiveRightsAndTheOwnerCanWrite()
    {
        RequireMode(0b100_100_100, 0b110_100_100);
        RequireMode(0b111_101_101, 0b111_101_101);
        RequireMode(0b110_000_000, 0b110_000_000);
        RequireMode(0b111_111_101_101, 0b111_101_101);
    }

    [UnixFact]
    public void AFileInPreparationIsReadableByItsOwnerOnly()
    {
        UnixCalls.SetMode(_source, (UnixFileMode)0b110_110_110);
        using (StepAction.At("Copy.Read", "source", _ =>
        {
            var staged = Staged(_one).Single();
            Assert.Equal((UnixFileMode)0b110_000_000, UnixCalls.ModeOf(staged));
            Assert.Equal(UnixFileMode.StickyBit | (UnixFileMode)0b111_000_000, UnixCalls.ModeOf(Path.GetDirectoryName(staged)!));
            Assert.Equal(UnixFileMode.StickyBit | (UnixFileMode)0b111_000_000, UnixCalls.ModeOf(Path.Combine(_one.Root, ".tessaport")));
        }))
        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one))
            copy.Commit(0, _one, "a", null);

        Assert.Equal((UnixFileMode)0b110_110_110, UnixCalls.ModeOf(Path.Combine(_one.Root, "a")));
    }

    [UnixFact]
    public void AFolderGetsAtMostTheRightsOfItsCounterpart()
    {
        _one.MakeFolder("private");
        UnixCalls.SetMode(Path.Combine(_one.Root, "private"), (UnixFileMode)0b111_000_000);

        _other.MakeFolder("private", _one.Find("private"));

        Assert.Equal((UnixFileMode)0b111_000_000, UnixCalls.ModeOf(Path.Combine(_other.Root, "private")));
    }

    [UnixFact]
    public void AFileIsPreparedUnderANameThatNothingHas()
    {
        using var folder = _one.OpenFolder("");
        File.CreateSymbolicLink(Path.Combine(_one.Root, "taken"), Path.Combine(_folder, "elsewhere"));

        Assert.ThrowsAny<IOException>(() => folder.Folder.CreateFile("taken"));

        Assert.False(File.Exists(Path.Combine(_folder, "elsewhere")));
    }

    private DriveSide NewSide(string name) => new DriveSide(Directory.CreateDirectory(Path.Combine(_folder, name)).FullName).Opened();

    private void RequireMode(int ofSource, int ofCopy)
    {
        UnixCalls.SetMode(_source, (UnixFileMode)ofSource);
        using (var copy = StagedCopy.Make(FileSource.Outside(_source), _one))
            copy.Commit(0, _one, "a", _one.Find("a"));
        Assert.Equal((UnixFileMode)ofCopy, UnixCalls.ModeOf(Path.Combine(_one.Root, "a")));
    }

    private static string[] NamesIn(DriveSide side) => [.. Directory.GetFiles(side.Root).Select(path => Path.GetFileName(path)).Order()];

    private static string[] Staged(DriveSide side) =>
        Directory.GetFiles(Path.Combine(side.Root, ".tessaport"), "*", SearchOption.AllDirectories);
}
