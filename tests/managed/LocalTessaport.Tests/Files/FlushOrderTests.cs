using System;
using System.Diagnostics;
using System.IO;
using System.Linq;
using Xunit;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>A file is on the disk before it takes its place, as a library shows that records what a process does.</summary>
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

        var renames = calls.Select(line => line.Split(' ')).Where(words => words[0] == "rename").ToList();
        foreach (var words in renames)
        {
            var flushed = Array.IndexOf(calls, "flush " + words[1]);
            Assert.InRange(flushed, 0, Array.IndexOf(calls, string.Join(' ', words)));
        }
        foreach (var name in Enumerable.Range(0, 20).Select(i => $"{i}.txt"))
            Assert.Equal(2, renames.Count(words => words[2] == name));
        Assert.Contains(renames, words => words[2].EndsWith(".json", StringComparison.Ordinal));
    }

    private string[] Record(params string[] arguments)
    {
        var recorder = Environment.GetEnvironmentVariable("VELMORA_ORDER_RECORDER")
            ?? throw new InvalidOperationException("VELMORA_ORDER_RECORDER must name the library that records the order of calls.");
        var log = Path.Combine(_home.Root, "calls");
        var start = new ProcessStartInfo(Worker.Executable, arguments);
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        start.Environment["LD_PRELOAD"] = recorder;
        start.Environment["VELMORA_RECORD_ORDER"] = log;
        using var process = Process.Start(start)!;
        process.WaitForExit();
        Assert.Equal(0, process.ExitCode);
        return File.ReadAllLines(log);
    }
}
