namespace Quorvex.Tessaport.API.Tests;

/// <summary>How the service writes its own files.</summary>
public sealed class HomeFileTests : IDisposable
{
    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AFailedWriteLeavesTheOldFileAndNothingElse()
    {
        var home = HomeFolder.Locate();
        AtomicFile.Write(home, home.ClipboardFile, stream => stream.Write("old"u8));

        Assert.Throws<IOException>(() => AtomicFile.Write(home, home.ClipboardFile, stream =>
        {
            stream.Write("new"u8);
            throw new IOException("The disk is full.");
        }));

        Assert.Equal("old", File.ReadAllText(home.ClipboardFile));
        Assert.Empty(Directory.GetFileSystemEntries(home.StateFolder));
    }

    [Fact]
    public void AFileThatCannotTakeItsPlaceLeavesNothing()
    {
        var home = HomeFolder.Locate();
        Directory.CreateDirectory(Path.Combine(home.ClipboardFile, "inner"));

        Assert.ThrowsAny<Exception>(() => AtomicFile.Write(home, home.ClipboardFile, stream => stream.Write("new"u8)));

        Assert.Empty(Directory.GetFileSystemEntries(home.StateFolder));
    }

    [Fact]
    public void AStateFileThatCannotBeReadIsNamedAndKept()
    {
        var drive = _home.AddDrive();
        drive.PutBoth("a.txt");
        drive.PermanentId("a.txt");
        var file = Path.Combine(_home.Root, "state", drive.Id + ".records");
        File.WriteAllText(file, "{\"version\":");

        var message = Assert.Throws<InvalidDataException>(() => drive.PermanentId("a.txt")).Message;

        Assert.Contains(file, message);
        Assert.Contains("Remove that file", message);
        Assert.Equal("{\"version\":", File.ReadAllText(file));
    }

    public static TheoryData<string, string> Replacements()
    {
        var replacements = new TheoryData<string, string>();
        foreach (var file in new[] { "service.json", "drives.json", "lock", "service.lock", "clipboard.txt", "state/{drive}.records" })
        {
            foreach (var kind in new[] { "pipe", "socket", "folder" })
                replacements.Add(file, kind);
        }
        return replacements;
    }

    [UnixTheory]
    [MemberData(nameof(Replacements))]
    public async Task AnythingButAFileInItsPlaceIsAnErrorThatNamesItAndNeverAHang(string file, string kind)
    {
        var drive = _home.AddDrive();
        drive.PutBoth("a.txt");
        var id = drive.Item("a.txt").Id;
        var path = Path.Combine(_home.Root, file.Replace("{drive}", drive.Id.ToString()));
        Replace(path, kind);

        // Each of them uses one file more than listing a folder does.
        foreach (var request in RequestsThatUse(file, id))
        {
            var token = TestContext.Current.CancellationToken;
            var failure = await Task.Run(() => Record.Exception(request), token).WaitAsync(TimeSpan.FromSeconds(20), token);
            Assert.NotNull(failure);
            Assert.Contains(path, failure.Message);
            Assert.Contains(kind == "folder" ? "is a folder" : "is a pipe, a socket or a device", failure.Message);
        }
        Assert.True(kind == "folder" ? Directory.Exists(path) : !UnixCalls.Run("stat", "--format=%F", path).StartsWith("regular"));
    }

    // Without blocks on the disk, as anyone who may write to the file can make it.
    [UnixTheory]
    [InlineData("service.json")]
    [InlineData("drives.json")]
    public void AFileThatIsTooLargeIsRefusedWithoutBeingRead(string name)
    {
        _home.AddDrive();
        using (var file = File.OpenWrite(Path.Combine(_home.Root, name)))
            file.SetLength(1L << 32);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(Path.Combine(_home.Root, name), message);
        Assert.Contains("it is larger than", message);
    }

    [UnixTheory]
    [InlineData("TPRECORD\u0003\0\0\0", 900, "it is incomplete or damaged")]
    [InlineData("", 900, "it is incomplete or damaged")]
    [InlineData("{\"version\":2}\n", 900, "it is incomplete or damaged")]
    [InlineData("TPRECORD\u0003\0\0\0", 2000, "more than the 1024 MB")]
    public void RecordsThatAreTooLargeOrMostlyHolesAreRefusedWithoutBeingRead(string beginning, int megabytes, string reason)
    {
        var drive = _home.AddDrive();
        drive.PutBoth("a.txt");
        _home.Service.Discover();
        var path = Path.Combine(_home.Root, "state", drive.Id + ".records");
        File.WriteAllText(path, beginning);
        using (var file = File.OpenWrite(path))
            file.SetLength((long)megabytes << 20);
        var before = GC.GetTotalAllocatedBytes(precise: true);

        var failure = Assert.ThrowsAny<Exception>(() => IndexFile.Read(path));

        Assert.InRange(GC.GetTotalAllocatedBytes(precise: true) - before, 0, 10 << 20);
        Assert.Contains(path, failure.Message);
        Assert.Contains(reason, failure.Message);
    }

    [Fact]
    public void MoreRecordsThanCanBeReadAgainAreNotWritten()
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt");
        Assert.True(drive.Sync("").IsSuccess);
        var path = Path.Combine(_home.Root, "state", drive.Id + ".records");
        var before = File.ReadAllBytes(path);
        var most = IndexFile.MostBytes;
        try
        {
            IndexFile.MostBytes = before.Length;
            drive.PutInWorkspace("b.txt");

            Assert.False(drive.Sync("").IsSuccess);

            Assert.Equal(before, File.ReadAllBytes(path));
            Assert.Equal(["a.txt", "b.txt"], drive.FilesOnServer());
        }
        finally
        {
            IndexFile.MostBytes = most;
        }
        Assert.True(drive.Sync("").IsSuccess);
    }

    [UnixTheory]
    [InlineData("service.json")]
    [InlineData("drives.json")]
    [InlineData("state/{drive}.records")]
    public async Task APipeThatComesAfterTheCheckIsAnErrorAndNeverAHang(string file)
    {
        var drive = _home.AddDrive();
        drive.PutBoth("a.txt");
        var id = drive.Item("a.txt").Id;
        var path = Path.Combine(_home.Root, file.Replace("{drive}", drive.Id.ToString()));
        File.SetLastWriteTimeUtc(path, DateTime.UtcNow.AddSeconds(-5));
        using var swap = StepAction.At("Home.Examined", path, _ => Replace(path, "pipe"));
        var token = TestContext.Current.CancellationToken;

        var failure = await Task.Run(() => Record.Exception(() => _home.Service.GetPermanentIds([id])), token).WaitAsync(TimeSpan.FromSeconds(20), token);

        Assert.True(swap.WasReached);
        Assert.Contains(path, failure?.Message);
        Assert.Contains("it is a pipe", failure?.Message);
    }

    [UnixFact]
    public void AFileInThePlaceOfTheStateFolderIsAnErrorThatNamesIt()
    {
        var drive = _home.AddDrive();
        drive.PutBoth("a.txt");
        File.WriteAllText(Path.Combine(_home.Root, "state"), "mine");

        var thrown = Assert.ThrowsAny<IOException>(() => drive.PermanentId("a.txt"));

        Assert.Contains(Path.Combine(_home.Root, "state"), thrown.Message);
        Assert.Contains("is not a folder", thrown.Message);
        Assert.Equal("mine", File.ReadAllText(Path.Combine(_home.Root, "state")));
    }

    private static void Replace(string path, string kind)
    {
        File.Delete(path);
        if (kind == "folder")
            Directory.CreateDirectory(path);
        else if (kind == "pipe")
            UnixCalls.Run("mkfifo", path);
        else
            UnixCalls.Run("python3", "-c", "import socket, sys; socket.socket(socket.AF_UNIX).bind(sys.argv[1])", path);
    }

    private IEnumerable<Action> RequestsThatUse(string file, ItemId id) => file switch
    {
        "service.json" or "drives.json" => [() => _home.Service.GetDrives(), () => _home.Service.SyncFiles([id])],
        "lock" => [() => HomeLock.Acquire(HomeFolder.Locate()).Dispose(), () => _home.Service.SyncFiles([id])],
        "service.lock" => [CountAFailure],
        "clipboard.txt" => [WriteClipboard],
        _ => [() => _home.Service.GetPermanentIds([id])],
    };

    private void CountAFailure()
    {
        _home.WriteServiceFile("""{"state": "running", "faults": {"getVersion": {"failure": "a", "times": 1}}}""");
        _home.Service.GetVersion();
    }

    private static void WriteClipboard() =>
        AtomicFile.Write(HomeFolder.Locate(), HomeFolder.Locate().ClipboardFile, stream => stream.Write("link"u8));
}
