namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// A process that changes files is killed at random moments; afterwards every file must be complete and none missing.
/// </summary>
public sealed class KillTests : IDisposable
{
    private const int Kills = 20;
    private const int LongestMilliseconds = 250;
    private const int FileSize = 2_000_000;
    private const int Files = 5;

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;
    private readonly Random _random = new();

    public KillTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AddingLeavesCompleteFilesOnly()
    {
        var sources = Path.Combine(_home.Root, "sources");
        for (var i = 0; i < Files; ++i)
            _drive.PutBoth($"{i}.bin", Content('o'));
        for (var round = 0; round < Kills; ++round)
        {
            for (var i = 0; i < Files; ++i)
                _home.MakeSource($"{i}.bin", Content((char)('a' + round)));
            KillWorker("add", sources);
            RequireCompleteFiles(Files);
        }
    }

    [Fact]
    public void SyncingLeavesCompleteFilesOnly()
    {
        for (var i = 0; i < Files; ++i)
            _drive.PutBoth($"{i}.bin", Content('o'));
        for (var round = 0; round < Kills; ++round)
        {
            for (var i = 0; i < Files; ++i)
            {
                var side = _random.Next(2) == 0 ? _drive.Workspace : _drive.Server;
                File.WriteAllText(Path.Combine(side, $"{i}.bin"), Content((char)('a' + round)));
            }
            KillWorker("sync");
            RequireCompleteFiles(Files);
            Assert.True(_drive.Sync("").IsSuccess);
            RequireEqualSides();
        }
    }

    [Fact]
    public void SyncingTouchesNothingThatIsLeftOut()
    {
        _home.Configure(_drive, "ignore", new[] { "*.tmp" });
        for (var i = 0; i < Files; ++i)
        {
            File.WriteAllText(_drive.InWorkspace($"{i}.tmp"), "from here");
            File.WriteAllText(_drive.OnServer($"{i}.tmp"), "from there");
        }
        for (var round = 0; round < Kills / 4; ++round)
        {
            for (var i = 0; i < Files; ++i)
                File.WriteAllText(_drive.InWorkspace($"{i}.bin"), Content((char)('a' + round)));
            KillWorker("sync");
            Assert.True(_drive.Sync("").IsSuccess);
        }
        for (var i = 0; i < Files; ++i)
        {
            Assert.Equal("from here", File.ReadAllText(_drive.InWorkspace($"{i}.tmp")));
            Assert.Equal("from there", File.ReadAllText(_drive.OnServer($"{i}.tmp")));
        }
    }

    [Fact]
    public void DeletingLeavesCompleteFilesOnly()
    {
        for (var round = 0; round < Kills; ++round)
        {
            for (var i = 0; i < 200; ++i)
                _drive.PutBoth($"folder {i % 4}/{i}.bin", "content");
            KillWorker("delete");
            _home.Service.Discover();
            foreach (var path in _drive.FilesInWorkspace().Select(_drive.InWorkspace).Concat(_drive.FilesOnServer().Select(_drive.OnServer)))
                Assert.Equal("content", File.ReadAllText(path));
            Assert.True(_drive.Sync("").IsSuccess);
            RequireEqualSides();
        }
    }

    private static string Content(char c) => new(c, FileSize);

    private void KillWorker(params string[] arguments)
    {
        var start = new ProcessStartInfo(Worker.Executable, arguments) { RedirectStandardOutput = true };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        using var process = Process.Start(start)!;
        Assert.Equal("ready", process.StandardOutput.ReadLine());
        Thread.Sleep(_random.Next(LongestMilliseconds));
        process.Kill();
        process.WaitForExit();
    }

    private void RequireCompleteFiles(int atLeast)
    {
        _home.Service.Discover();
        foreach (var side in new[] { _drive.Workspace, _drive.Server })
        {
            var files = Directory.GetFiles(side, "*", SearchOption.AllDirectories);
            Assert.True(files.Length >= atLeast);
            foreach (var file in files)
            {
                var text = File.ReadAllText(file);
                Assert.Equal(Content(text[0]), text);
            }
            Assert.False(Directory.Exists(Path.Combine(side, ".tessaport")));
        }
        Assert.DoesNotContain(Directory.GetFiles(Path.Combine(_home.Root, "state")), name => name.EndsWith(".tmp", StringComparison.Ordinal));
    }

    private void RequireEqualSides()
    {
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        foreach (var name in _drive.FilesInWorkspace())
            Assert.Equal(File.ReadAllText(_drive.InWorkspace(name)), File.ReadAllText(_drive.OnServer(name)));
    }
}
