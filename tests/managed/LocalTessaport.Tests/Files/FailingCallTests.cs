namespace Quorvex.Tessaport.API.Tests;

/// <summary>Each call of the system that a sync of small files makes on its drive fails once, in a process of its own.</summary>
public sealed class FailingCallTests : IDisposable
{
    private const string Library = "VELMORA_FAILING_CALLS_LIBRARY";
    private const int InputOutputError = 5;
    private const int NoSpace = 28;

    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [UnixTheory]
    [InlineData("openat2", InputOutputError)]
    [InlineData("openat", InputOutputError)]
    [InlineData("openat", NoSpace)]
    [InlineData("statx", InputOutputError)]
    [InlineData("fdopendir", InputOutputError)]
    [InlineData("readdir", InputOutputError)]
    [InlineData("mkdirat", NoSpace)]
    [InlineData("pread", InputOutputError)]
    [InlineData("pwrite", NoSpace)]
    [InlineData("fchmod", InputOutputError)]
    [InlineData("futimens", InputOutputError)]
    [InlineData("fsync", InputOutputError)]
    [InlineData("renameat2", InputOutputError)]
    [InlineData("renameat2", NoSpace)]
    [InlineData("unlinkat", InputOutputError)]
    [InlineData("syncfs", InputOutputError)]
    [InlineData("linkat", InputOutputError, "RenamingWithoutReplacing")]
    [InlineData("linkat", NoSpace, "RenamingWithoutReplacing, Exchanging")]
    [InlineData("unlinkat", InputOutputError, "RenamingWithoutReplacing")]
    [InlineData("statx", InputOutputError, "RenamingWithoutReplacing, HardLinks")]
    public void NoVersionIsLostAndTheNextSyncSucceeds(string call, int error, string lacking = "None")
    {
        var drive = _home.AddDrive();
        var start = new ProcessStartInfo(Worker.Executable, ["fail-call", call, $"{error}", drive.Workspace, drive.Server])
        {
            RedirectStandardOutput = true,
        };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        start.Environment["VELMORA_WORKER_LACKS"] = lacking;
        start.Environment["LD_PRELOAD"] = Environment.GetEnvironmentVariable(Library)
            ?? throw new InvalidOperationException($"{Library} must name the library that lets calls fail.");
        using var worker = Process.Start(start)!;
        var lines = worker.StandardOutput.ReadToEnd().TrimEnd().Split('\n');
        worker.WaitForExit();

        Assert.Equal(0, worker.ExitCode);
        Assert.Matches("^[1-9][0-9]* calls failed$", Assert.Single(lines));
    }
}
