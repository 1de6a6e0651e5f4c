namespace Quorvex.Tessaport.API.Tests;

/// <summary>More files than one group holds: those of the next group are copied while the previous ones take their places.</summary>
public sealed class TransferGroupTests : IDisposable
{
    private const int InNextGroup = TransferQueue.MostFiles + 44;
    private const int Files = TransferQueue.MostFiles + 200;

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public TransferGroupTests()
    {
        _drive = _home.AddDrive();
        _home.Service.Discover();
        for (var i = 0; i < Files; ++i)
            _drive.PutInWorkspace(NameOf(i), $"content {i}");
    }

    public void Dispose()
    {
        Step.Hook = null;
        _home.Dispose();
    }

    [Fact]
    public void EveryFileArrivesWithItsContent()
    {
        Assert.True(_drive.Sync("").IsSuccess);

        for (var i = 0; i < Files; ++i)
            Assert.Equal($"content {i}", File.ReadAllText(_drive.OnServer(NameOf(i))));
        RequireNoLeavings();
    }

    [Fact]
    public void AFileOfTheNextGroupIsEditedWhileThePreviousOneTakesItsPlaces()
    {
        using var edit = StepAction.At("Commit.Placed", NameOf(10), _ => File.WriteAllText(_drive.InWorkspace(NameOf(InNextGroup)), "edited"));

        Assert.True(_drive.Sync("").IsSuccess);
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(edit.WasReached);
        Assert.Equal("edited", File.ReadAllText(_drive.OnServer(NameOf(InNextGroup))));
    }

    [Fact]
    public void FailuresInEachGroupPreventNoOtherFile()
    {
        string[] failing = [NameOf(0), NameOf(TransferQueue.MostFiles - 1), NameOf(TransferQueue.MostFiles), NameOf(Files - 1)];
        Step.Hook = (step, path) =>
        {
            if (step == "Copy.Opened" && failing.Contains(Path.GetFileName(path)))
                throw new IOException("The disk has a bad block.");
        };

        Assert.False(_drive.Sync("").IsSuccess);
        Step.Hook = null;

        Assert.Equal(Files - failing.Length, _drive.FilesOnServer().Count);
        RequireNoLeavings();
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
    }

    [Theory]
    [InlineData(0)]
    [InlineData(InNextGroup)]
    [InlineData(Files - 1)]
    public void ARequestThatBreaksOffLeavesNoCopyBehindAndNoThread(int at)
    {
        var (opened, read) = (0, 0);
        Step.Hook = (step, path) =>
        {
            if (step == "Copy.Opened")
            {
                Interlocked.Increment(ref opened);
                // The next group is still being prepared when the request breaks off.
                Thread.Sleep(2);
            }
            if (step == "Copy.Read")
                Interlocked.Increment(ref read);
            if (step == "Commit.Checked" && path.EndsWith(NameOf(at), StringComparison.Ordinal))
                throw new InvalidOperationException("broken");
        };

        Assert.Throws<InvalidOperationException>(() => _drive.Sync(""));
        var (openedAtEnd, readAtEnd) = (Volatile.Read(ref opened), Volatile.Read(ref read));

        Assert.Equal(openedAtEnd, readAtEnd);
        RequireNoLeavings();
        Assert.Equal(at, _drive.FilesOnServer().Count);
        Step.Hook = null;
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        Assert.Equal(openedAtEnd, opened);
    }

    private static string NameOf(int file) => $"{file:D4}.txt";

    private void RequireNoLeavings()
    {
        foreach (var side in new[] { _drive.Workspace, _drive.Server })
        {
            var staging = Path.Combine(side, ".tessaport");
            Assert.False(Directory.Exists(staging) && Directory.EnumerateFileSystemEntries(staging).Any());
        }
    }
}
