namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// A file is flushed to the disk before it takes its place; a preloaded library records the order of the calls.
/// </summary>
public sealed class FlushOrderTests : IDisposable
{
    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [UnixFact]
    public void EveryFileIsFlushedBeforeItIsRenamed()
    {
        var drive = _home.AddDrive();
        for (var i = 0; i < 20; ++i)
            _home.MakeSource($"{i}.txt");
        drive.PutBoth("0.txt", "replaced");

        var calls = Record("add-once", Path.Combine(_home.Root, "sources"));

        var renames = RequireFlushedBeforeRenamed(calls);
        foreach (var name in Enumerable.Range(0, 20).Select(i => $"{i}.txt"))
            Assert.Equal(2, renames.Count(words => words[2] == name));
        Assert.Contains(renames, words => words[2].EndsWith(".records", StringComparison.Ordinal));
    }

    [UnixFact]
    public void EveryFileOfALargeGroupIsFlushedBeforeItIsRenamed()
    {
        var calls = RecordASyncOf(300);

        var renames = RequireFlushedBeforeRenamed(calls);
        foreach (var name in Enumerable.Range(0, 300).Select(i => $"{i}.txt"))
            Assert.Single(renames, words => words[2] == name);
    }

    // A descriptor reports what failed since it was opened, and earlier failures only if no program was told of them.
    [UnixFact]
    public void FileSystemOfALargeGroupIsFlushedByADescriptorThatWasOpenBeforeTheFirstCopy()
    {
        var calls = RecordASyncOf(300);

        var firstCopy = Array.FindIndex(calls, call => call.StartsWith("create ", StringComparison.Ordinal) && call.Contains(".tessaport/copies-", StringComparison.Ordinal));
        var flushes = calls.Where(call => call.StartsWith("flush-all ", StringComparison.Ordinal)).ToList();
        Assert.NotEmpty(flushes);
        Assert.All(flushes, flush => Assert.InRange(Array.LastIndexOf(calls, flush.Replace("flush-all ", "open ", StringComparison.Ordinal)), 0, firstCopy));
    }

    // Records that say that a version was synced must not outlive it in a power failure: the next sync would take the version that is
    // there instead for an edit, and replace the one on the other side.
    [UnixFact]
    public void FilesAndTheirNamesAreFlushedBeforeTheRecordsThatSpeakOfThem()
    {
        var calls = RecordASyncOf(3);

        var (placed, saved) = LastSteps(calls);
        foreach (var path in new[] { "ws/0.txt", "ws/1.txt", "ws/2.txt", "ws", "sv/0.txt", "sv/1.txt", "sv/2.txt", "sv" })
            Assert.Contains(calls[placed..saved], call => call.StartsWith("flush /", StringComparison.Ordinal) && call.EndsWith("/" + path, StringComparison.Ordinal));
    }

    [UnixFact]
    public void BothFileSystemsAreFlushedBeforeTheRecordsOfManyFiles()
    {
        var calls = RecordASyncOf(300);

        var (placed, saved) = LastSteps(calls);
        foreach (var side in new[] { "ws", "sv" })
            Assert.Contains(calls[placed..saved], call => call.StartsWith("flush-all ", StringComparison.Ordinal) && call.EndsWith("/" + side, StringComparison.Ordinal));
    }

    [UnixFact]
    public void FilesThatTheFirstLookFindsEqualAreFlushedBeforeTheirRecords()
    {
        var drive = _home.AddDrive();
        drive.PutBoth("folder/a.txt");

        var calls = Record("sync-once");

        var saved = Array.FindIndex(calls, IsSaving);
        foreach (var path in new[] { "ws/folder/a.txt", "sv/folder/a.txt", "ws/folder", "sv/folder" })
            Assert.Contains(calls[..saved], call => call.StartsWith("flush ", StringComparison.Ordinal) && call.EndsWith("/" + path, StringComparison.Ordinal));
    }

    /// <summary>Where the last file takes its place, and where the records are saved after that.</summary>
    private static (int Placed, int Saved) LastSteps(string[] calls)
    {
        var saved = Array.FindLastIndex(calls, IsSaving);
        return (Array.FindLastIndex(calls[..saved], call => call.StartsWith("rename ", StringComparison.Ordinal)), saved);
    }

    private static bool IsSaving(string call) =>
        call.StartsWith("rename ", StringComparison.Ordinal) && call.EndsWith(".records", StringComparison.Ordinal);

    /// <summary>The renames that the process made, as words.</summary>
    private static List<string[]> RequireFlushedBeforeRenamed(string[] calls)
    {
        var created = new HashSet<string>();
        var flushed = new HashSet<string>();
        var renames = new List<string[]>();
        foreach (var words in calls.Select(line => line.Split(' ').Select(word => Path.GetFileName(word)).ToArray()))
        {
            if (words[0] == "create")
                created.Add(words[1]);
            else if (words[0] == "flush-all")
                flushed.UnionWith(created);
            else if (words[0] == "flush")
                flushed.Add(words[1]);
            else if (words[0] == "rename")
            {
                renames.Add(words);
                Assert.Contains(words[1], flushed);
                // It can be renamed again before it takes its place.
                flushed.Add(words[2]);
            }
        }
        return renames;
    }

    // The files are new, and named by their numbers.
    private string[] RecordASyncOf(int files)
    {
        var drive = _home.AddDrive();
        _home.Service.Discover();
        for (var i = 0; i < files; ++i)
            drive.PutInWorkspace($"{i}.txt");
        return Record("sync-once");
    }

    private string[] Record(params string[] arguments)
    {
        const string Library = "VELMORA_RECORDED_CALLS_LIBRARY";
        var recorder = Environment.GetEnvironmentVariable(Library)
            ?? throw new InvalidOperationException($"{Library} must name the library that records the order of calls.");
        var log = Path.Combine(_home.Root, "calls");
        var start = new ProcessStartInfo(Worker.Executable, arguments);
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        start.Environment["LD_PRELOAD"] = recorder;
        start.Environment["VELMORA_RECORDED_CALLS"] = log;
        using var process = Process.Start(start)!;
        process.WaitForExit();
        Assert.Equal(0, process.ExitCode);
        return File.ReadAllLines(log);
    }
}
