using System.Text.Json;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>A home of its own for one test, with drives and files like those that the tool makes.</summary>
public sealed class TestHome : IDisposable
{
    private readonly List<Dictionary<string, object>> _drives = [];

    public TestHome()
    {
        Directory.CreateDirectory(Root);
        Environment.SetEnvironmentVariable("TESSAPORT_HOME", Root);
        SetState("running");
    }

    public string Root { get; } = Path.Combine(Path.GetTempPath(), "tessaport-tests-" + Guid.NewGuid().ToString("N"));

    public TessaportService Service { get; } = new();

    public void Dispose()
    {
        Environment.SetEnvironmentVariable("TESSAPORT_HOME", null);
        Directory.Delete(Root, recursive: true);
    }

    public void SetState(string state) => WriteServiceFile($$"""{"state": "{{state}}"}""");

    /// <summary>Replaces the state file in one step, as the tool does: requests that wait read it at any moment.</summary>
    public void WriteServiceFile(string content)
    {
        var prepared = Path.Combine(Root, "service.json.prepared");
        File.WriteAllText(prepared, content);
        AtomicFile.Replace(prepared, Path.Combine(Root, "service.json"));
    }

    public TestDrive AddDrive(
        string type = "Drive", bool locking = false, bool writable = true, bool offline = false, string? name = null)
    {
        var id = Guid.NewGuid();
        _drives.Add(new()
        {
            ["id"] = id.ToString(),
            ["name"] = name ?? "Drive " + _drives.Count,
            ["type"] = "Quorvex.DataSourceType." + type,
            ["workspace"] = $"drives/{id}/ws",
            ["server"] = $"drives/{id}/sv",
            ["locking"] = locking,
            ["writable"] = writable,
            ["offline"] = offline,
        });
        WriteDrives();
        return new TestDrive(this, id, Path.Combine(Root, "drives", id.ToString()));
    }

    /// <summary>Changes one member of a drive that was added.</summary>
    public void Configure(TestDrive drive, string member, object value)
    {
        _drives.Single(d => (string)d["id"] == drive.Id.ToString())[member] = value;
        WriteDrives();
    }

    public void WriteDrives() => WriteDrives(JsonSerializer.Serialize(_drives));

    public void WriteDrives(string json) => File.WriteAllText(Path.Combine(Root, "drives.json"), json);

    /// <summary>A file outside every drive.</summary>
    public string MakeSource(string name, string content = "content")
    {
        var path = Path.Combine(Root, "sources", name);
        Directory.CreateDirectory(Path.GetDirectoryName(path)!);
        File.WriteAllText(path, content);
        return path;
    }
}
