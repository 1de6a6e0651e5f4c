using System.Globalization;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>Delays and failures that a user sets for requests while hosts use the service.</summary>
public sealed class RequestFaultTests : IDisposable
{
    private static readonly TimeSpan LongestWait = TimeSpan.FromSeconds(30);

    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    private static CancellationToken Token => TestContext.Current.CancellationToken;

    private string ServiceFile => Path.Combine(_home.Root, "service.json");

    [Fact]
    public void AFailureConcernsTheRequestOfItsNameOnly()
    {
        var requests = AllRequests.Of(_home.Service, _home.AddDrive().Root.Id);
        Assert.Equal(20, requests.Count);
        foreach (var failing in requests.Keys)
        {
            SetFaults($$$"""{"{{{failing}}}": {"failure": "quota exceeded"}}""");
            foreach (var (name, request) in requests)
            {
                var thrown = Record.Exception(request);
                Assert.Equal(name == failing ? "quota exceeded" : null, thrown?.Message);
            }
        }
    }

    [Theory]
    [InlineData("error", typeof(IOException))]
    [InlineData("not-installed", typeof(TessaportNotInstalledException))]
    [InlineData("not-running", typeof(TessaportNotRunningException))]
    [InlineData("requires-update", typeof(TessaportRequiresUpdateException))]
    [InlineData("forced-update", typeof(TessaportForcedUpdateException))]
    [InlineData("api-requires-update", typeof(TessaportApiRequiresUpdateException))]
    public void AFailureThrowsTheExceptionOfItsKind(string kind, Type expected)
    {
        SetFaults($$$"""{"getDrives": {"failure": "in its own words", "kind": "{{{kind}}}"}}""");

        Assert.Equal("in its own words", Assert.Throws(expected, () => _home.Service.GetDrives()).Message);
    }

    [Fact]
    public void ADelayedRequestAnswersAfterTheDelay()
    {
        SetFaults("""{"getVersion": {"delayMilliseconds": 300}}""");
        var waited = Stopwatch.StartNew();

        _home.Service.GetVersion();

        Assert.True(waited.Elapsed >= TimeSpan.FromMilliseconds(300), $"{waited.Elapsed}");
    }

    [Fact]
    public void ADelayedFailureFailsAfterTheDelay()
    {
        SetFaults("""{"getVersion": {"delayMilliseconds": 200, "failure": "quota exceeded"}}""");
        var waited = Stopwatch.StartNew();

        Assert.Throws<IOException>(() => _home.Service.GetVersion());

        Assert.True(waited.Elapsed >= TimeSpan.FromMilliseconds(200), $"{waited.Elapsed}");
    }

    [Fact]
    public async Task ADelayedSyncHoldsNoLockAndEndsWhenTheDelayIsCleared()
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt");
        SetFaults("""{"syncFiles": {"delayMilliseconds": 600000}}""");
        var root = drive.Root.Id;
        var sync = Task.Run(() => _home.Service.SyncFiles([root]), Token);
        await RequireWaiting(sync);

        using (var held = HomeLock.TryAcquire(HomeFolder.Locate()))
            Assert.NotNull(held);
        using (HomeLock.AcquireServiceFile(HomeFolder.Locate()))
            Assert.NotEmpty(_home.Service.GetFolderContents(root));
        _home.SetState("running");

        Assert.True((await sync.WaitAsync(LongestWait, Token)).IsSuccess);
    }

    [Fact]
    public async Task AServiceThatIsStoppedDuringADelayFailsAtOnce()
    {
        SetFaults("""{"getVersion": {"delayMilliseconds": 600000}}""");
        var request = Task.Run(_home.Service.GetVersion, Token);
        await RequireWaiting(request);

        _home.SetState("not-running");

        await Assert.ThrowsAsync<TessaportNotRunningException>(() => request.WaitAsync(LongestWait, Token));
    }

    [Fact]
    public void CountedFailuresEndAndLeaveTheRestOfTheFile()
    {
        File.WriteAllText(ServiceFile, """
            {"note": "Übersicht", "state": "running", "faults":
             {"getDrives": {"failure": "a", "kind": "not-running", "times": 2, "delayMilliseconds": 1}, "getVersion": {"failure": "b"}}}
            """);

        Assert.Throws<TessaportNotRunningException>(() => _home.Service.GetDrives());
        Assert.Equal(1, FaultOf("getDrives").GetProperty("times").GetInt32());
        Assert.Throws<TessaportNotRunningException>(() => _home.Service.GetDrives());
        Assert.Empty(_home.Service.GetDrives());

        Assert.Equal("{\"delayMilliseconds\":1}", FaultOf("getDrives").GetRawText());
        Assert.Equal("Übersicht", Content().GetProperty("note").GetString());
        Assert.Throws<IOException>(() => _home.Service.GetVersion());
    }

    [Fact]
    public void TheLastCountedFailureLeavesAPlainState()
    {
        SetFaults("""{"getVersion": {"failure": "a", "times": 1}}""");

        Assert.Throws<IOException>(() => _home.Service.GetVersion());

        Assert.Equal("{\"state\":\"running\"}\n", File.ReadAllText(ServiceFile));
        Assert.False(File.Exists(ServiceFile + ".new"));
    }

    [Fact]
    public async Task CountedFailuresAreCountedOnceAcrossProcesses()
    {
        const int failures = 60;
        SetFaults($$$"""{"getVersion": {"failure": "a", "times": {{{failures}}}}}""");

        var counts = await Task.WhenAll(Enumerable.Range(0, 4).Select(_ => FailuresSeenByAWorker(requests: 40)));

        Assert.Equal(failures, counts.Sum());
        Assert.Equal("{\"state\":\"running\"}\n", File.ReadAllText(ServiceFile));
    }

    [Fact]
    public void AFailureThatCannotBeCountedNamesTheFileAndTheReason()
    {
        SetFaults("""{"getVersion": {"failure": "a", "times": 1}}""");
        Directory.CreateDirectory(ServiceFile + ".new");

        var message = Assert.Throws<IOException>(() => _home.Service.GetVersion()).Message;

        Assert.Contains(ServiceFile, message);
        Assert.Contains("tessaport service clear", message);
    }

    [Theory]
    [InlineData("5", "'faults' is not an object")]
    [InlineData("""{"syncEverything": {"failure": "a"}}""", "'syncEverything' in 'faults' is not the name of a request")]
    [InlineData("""{"getVersion": 5}""", "the fault of 'getVersion' is not an object")]
    [InlineData("""{"getVersion": {"dealy": 5}}""", "'dealy' of 'getVersion' is unknown")]
    [InlineData("""{"getVersion": {"delayMilliseconds": "5s"}}""", "'delayMilliseconds' of 'getVersion' is not a whole number")]
    [InlineData("""{"getVersion": {"delayMilliseconds": 1e12}}""", "'delayMilliseconds' of 'getVersion' is not a whole number")]
    [InlineData("""{"getVersion": {"failure": 5}}""", "'failure' of 'getVersion' is not a string")]
    [InlineData("""{"getVersion": {"failure": "a", "times": 0}}""", "'times' of 'getVersion' is not a whole number")]
    [InlineData("""{"getVersion": {"failure": "a", "times": 1.5}}""", "'times' of 'getVersion' is not a whole number")]
    [InlineData("""{"getVersion": {"failure": "a", "kind": "fire"}}""", "the 'kind' 'fire' of 'getVersion' is unknown")]
    [InlineData("""{"getVersion": {"times": 3}}""", "the fault of 'getVersion' has no 'failure'")]
    public void AnUnknownEntryIsAnErrorAndIsKept(string faults, string reason)
    {
        SetFaults(faults);
        var before = File.ReadAllText(ServiceFile);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(ServiceFile, message);
        Assert.Contains(reason, message);
        Assert.Contains("tessaport service clear", message);
        Assert.Equal(before, File.ReadAllText(ServiceFile));
    }

    [Theory]
    [InlineData("""{"state": "running", "faults": {"getVersion": {"failure": "a", "times": 2, "times": 3}}}""")]
    [InlineData("""{"state": "running", "x": 1, "x": 2, "faults": {"getVersion": {"failure": "a", "times": 2}}}""")]
    public void AMemberThatAppearsTwiceIsAnErrorAndNotCounted(string content)
    {
        File.WriteAllText(ServiceFile, content);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetVersion()).Message;

        Assert.Contains("appears twice", message);
        Assert.Equal(content, File.ReadAllText(ServiceFile));
    }

    private static Task RequireWaiting(Task request) =>
        Assert.ThrowsAsync<TimeoutException>(() => request.WaitAsync(TimeSpan.FromMilliseconds(200), Token));

    private void SetFaults(string faults) =>
        _home.WriteServiceFile($$"""{"state": "running", "faults": {{faults}}}""");

    private JsonElement Content() =>
        JsonDocument.Parse(File.ReadAllText(ServiceFile)).RootElement;

    private JsonElement FaultOf(string request) => Content().GetProperty("faults").GetProperty(request);

    private async Task<int> FailuresSeenByAWorker(int requests)
    {
        var start = new ProcessStartInfo(Worker.Executable, $"fail {requests}") { RedirectStandardOutput = true };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        using var worker = Process.Start(start)!;
        var output = await worker.StandardOutput.ReadToEndAsync(Token);
        await worker.WaitForExitAsync(Token);
        Assert.Equal(0, worker.ExitCode);
        return int.Parse(output, CultureInfo.InvariantCulture);
    }
}
