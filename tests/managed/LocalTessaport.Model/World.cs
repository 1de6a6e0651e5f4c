namespace Quorvex.Tessaport.API.Model;

/// <summary>A home with one drive, and a folder outside it that nothing may change.</summary>
internal sealed class World : IDisposable
{
    private static readonly Guid DriveId = Guid.Parse("5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01");

    private readonly string _outsideBefore;

    public World()
    {
        Workspace = new Side(Path.Combine(Root, "workspace"));
        Server = new Side(Path.Combine(Root, "server"));
        Outside = Path.Combine(Root, "outside");
        Sources = Directory.CreateDirectory(Path.Combine(Root, "sources")).FullName;
        Directory.CreateDirectory(Path.Combine(Outside, "p"));
        File.WriteAllText(Path.Combine(Outside, "a.txt"), "outside");
        File.WriteAllText(Path.Combine(Outside, "p", "b.txt"), "outside, deeper");
        _outsideBefore = DescribeOutside();
        WriteDrive();
        File.WriteAllText(Path.Combine(Root, "service.json"), """{"state": "running"}""");
        Environment.SetEnvironmentVariable("TESSAPORT_HOME", Root);
        Service.Discover();
    }

    public string Root { get; } =
        Directory.CreateDirectory(Path.Combine(Path.GetTempPath(), "tessaport-model-" + Guid.NewGuid().ToString("N"))).FullName;

    public Side Workspace { get; }
    public Side Server { get; }
    public string Outside { get; }
    public string Sources { get; }
    public TessaportService Service { get; } = new();

    /// <summary>What the drive leaves out; see <see cref="SetPatterns"/>.</summary>
    public Patterns Patterns { get; private set; } = Patterns.None;

    public IEnumerable<Side> Sides => [Workspace, Server];

    public void Dispose()
    {
        Environment.SetEnvironmentVariable("TESSAPORT_HOME", null);
        Directory.Delete(Root, recursive: true);
    }

    public ItemId RootItem() => Service.GetDrives().Single().Root.Id;

    public Item? Find(string path) => Service.GetItemsByRelativePaths(DriveId, [path]).SingleOrDefault();

    /// <summary>Whether a sync renamed a folder, or exchanged two.</summary>
    public bool HasMovedFolders(CommandResult result)
    {
        var folders = result.ItemsUpdated.Where(item => item.IsFolder).Select(item => item.Id).ToList();
        return Service.GetProperties(folders, ["SyncAction"]).Values.Any(value => (string)value.Value == "renamed");
    }

    public bool IsFolderOnEither(string path) =>
        Sides.Any(side => new DirectoryInfo(side.At(path)) is { Exists: true, LinkTarget: null });

    public void SetPatterns(Patterns patterns)
    {
        Patterns = patterns;
        WriteDrive();
    }

    public CommandResult Sync() => Service.SyncFiles([RootItem()]);

    /// <summary>The versions that exist now on either side.</summary>
    public HashSet<int> Versions() => Sides.SelectMany(side => side.Files().Values).ToHashSet();

    /// <summary>Everything on both sides, with the numbers of the versions.</summary>
    public string Describe() => string.Join('\n', Sides.Select(side => $"In '{side.Root}':\n" + string.Join('\n', side.Walk().Select(
        entry => $"  {entry.Kind} {entry.Path}{(entry.Kind == Kind.File ? " = " + File.ReadAllText(side.At(entry.Path)).Split(' ')[1] : "")}"))));

    public bool IsOutsideUnchanged() => DescribeOutside() == _outsideBefore;

    private void WriteDrive() => File.WriteAllText(Path.Combine(Root, "drives.json"), $$"""
        [{"id": "{{DriveId}}", "name": "Model", "type": "Quorvex.DataSourceType.Drive",
          "workspace": "workspace", "server": "server", "locking": true, "ignore": {{Patterns.ToJson()}}}]
        """);

    private string DescribeOutside() => string.Join('\n', Directory
        .EnumerateFileSystemEntries(Outside, "*", SearchOption.AllDirectories)
        .Order(StringComparer.Ordinal)
        .Select(path => $"{path} {File.GetLastWriteTimeUtc(path):O} {(File.Exists(path) ? File.ReadAllText(path) : "")}"));
}
