namespace Quorvex.Tessaport.API.Model;

/// <summary>Requests to the service in this process, for homes in different folders.</summary>
internal static class TestHome
{
    private const string FirstDrive = """
        {"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "Model", "type": "Quorvex.DataSourceType.Drive",
          "workspace": "workspace", "server": "server"}
        """;

    private const string SecondDrive = """
        {"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b02", "name": "Second", "type": "Quorvex.DataSourceType.Drive",
          "workspace": "drives/second/workspace", "server": "drives/second/server"}
        """;

    /// <summary>Writes the files of a home with one drive.</summary>
    public static void Write(string home)
    {
        File.WriteAllText(Path.Combine(home, "drives.json"), $"[{FirstDrive}]");
        File.WriteAllText(Path.Combine(home, "service.json"), """{"state": "running"}""");
    }

    /// <summary>Adds another drive to those of a home.</summary>
    public static void WriteWithSecond(string home) => File.WriteAllText(Path.Combine(home, "drives.json"), $"[{FirstDrive}, {SecondDrive}]");

    /// <summary>Syncs all drives, and returns the folders of each.</summary>
    public static List<(string Workspace, string Server)> Sync(string home)
    {
        Environment.SetEnvironmentVariable("TESSAPORT_HOME", home);
        var service = new TessaportService();
        var drives = service.GetDrives().ToList();
        foreach (var drive in drives)
        {
            var result = service.SyncFiles([drive.Root.Id]);
            if (!result.IsSuccess)
                throw new BrokenPromiseException($"The sync of '{drive.Name}' fails: {ReasonsOf(service, drive)}");
        }
        return drives.ConvertAll(drive => (drive.WorkspaceLocation.Replace('\\', '/'), ServerOf(home, drive)));
    }

    private static string ServerOf(string home, Drive drive) =>
        Path.Combine(home, drive.Name == "Second" ? "drives/second/server" : "server");

    private static string ReasonsOf(TessaportService service, Drive drive) =>
        string.Join(' ', service.GetProperties([drive.Root.Id], ["Pending", "UpkeepError"]).Values.Select(value => value.Value));
}
