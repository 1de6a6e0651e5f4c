namespace Quorvex.Tessaport.API.Tests;

public sealed class StateTests : IDisposable
{
    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    public static TheoryData<string, Type, string> States => new()
    {
        { "not-running", typeof(TessaportNotRunningException), "tessaport service start" },
        { "requires-update", typeof(TessaportRequiresUpdateException), "updated" },
        { "forced-update", typeof(TessaportForcedUpdateException), "updated" },
        { "api-requires-update", typeof(TessaportApiRequiresUpdateException), "updated" },
    };

    [Theory]
    [MemberData(nameof(States))]
    public void EveryRequestThrowsTheExceptionOfTheState(string state, Type expected, string remedy)
    {
        var root = _home.AddDrive().Root;
        _home.SetState(state);

        foreach (var request in AllRequests.Of(_home.Service, root.Id).Values)
        {
            var thrown = Assert.Throws(expected, request);
            Assert.Contains(remedy, thrown.Message);
        }
    }

    [Fact]
    public void WithoutHomeEveryRequestSaysThatNothingIsInstalled()
    {
        var root = _home.AddDrive().Root;
        Environment.SetEnvironmentVariable("TESSAPORT_HOME", Path.Combine(_home.Root, "nowhere"));

        foreach (var request in AllRequests.Of(_home.Service, root.Id).Values)
            Assert.Contains("tessaport demo", Assert.Throws<TessaportNotInstalledException>(request).Message);
    }

    [Fact]
    public void MakingAServiceNeverFailsForTheState()
    {
        _home.SetState("forced-update");

        Assert.NotNull(new TessaportService());
        Assert.NotNull(new TessaportService(new IntPtr(42)));
    }

    [Fact]
    public void AnOpenConnectionSeesTheStateChange()
    {
        _home.SetState("not-running");
        Assert.Throws<TessaportNotRunningException>(() => _home.Service.GetVersion());

        _home.SetState("running");

        Assert.Equal(typeof(StateTests).Assembly.GetName().Version!.ToString(3), _home.Service.GetVersion());
    }

    [Theory]
    [InlineData("")]
    [InlineData("[]")]
    [InlineData("{\"state\": 5}")]
    [InlineData("{\"state\": \"asleep\"}")]
    [InlineData("{}")]
    public void AnUnreadableStateNamesTheFileAndTheRemedy(string json)
    {
        var file = Path.Combine(_home.Root, "service.json");
        File.WriteAllText(file, json);

        var thrown = Assert.Throws<InvalidDataException>(() => _home.Service.Discover());

        Assert.Contains(file, thrown.Message);
        Assert.Contains("tessaport service start", thrown.Message);
    }

    [Theory]
    [InlineData("{}", "not an array")]
    [InlineData("[5]", "not an object")]
    [InlineData("""[{"id": "x", "name": "a", "type": "Quorvex.DataSourceType.Drive"}]""", "GUID")]
    [InlineData("""[{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "a", "type": "Tape"}]""", "'Tape'")]
    [InlineData("""[{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "type": "Quorvex.DataSourceType.Drive"}]""", "'name'")]
    [InlineData("""[{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "a", "type": "Quorvex.DataSourceType.Drive", "locking": 1}]""", "'locking'")]
    [InlineData("""[{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "a", "type": "Quorvex.DataSourceType.Drive", "workspace": "w", "server": "w/s"}]""", "' overlap.")]
    public void UnreadableDrivesNameTheFileAndTheReason(string json, string reason)
    {
        _home.WriteDrives(json);

        var thrown = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives());

        Assert.Contains("drives.json", thrown.Message);
        Assert.Contains(reason, thrown.Message);
    }

    [Fact]
    public void AHomeWithoutDrivesHasNone() => Assert.Empty(_home.Service.GetDrives());
}
