namespace Quorvex.Tessaport.API.Tests;

/// <summary>A drive of a test's home: its two folders, and its items through the service.</summary>
public sealed class TestDrive
{
    private readonly TestHome _home;

    public TestDrive(TestHome home, Guid id, string folder)
    {
        _home = home;
        Id = id;
        Workspace = Path.Combine(folder, "ws");
        Server = Path.Combine(folder, "sv");
        Directory.CreateDirectory(Workspace);
        Directory.CreateDirectory(Server);
    }

    public Guid Id { get; }
    public string Workspace { get; }
    public string Server { get; }

    public Drive Record => _home.Service.GetDrives().Single(drive => drive.Id == Id);
    public Item Root => Record.Root;

    public string InWorkspace(string path) => Path.Combine(Workspace, path);
    public string OnServer(string path) => Path.Combine(Server, path);

    /// <summary>The path as items carry it.</summary>
    public string WorkspacePath(string path) => InWorkspace(path).Replace('/', '\\');

    public void PutBoth(string path, string content = "content")
    {
        Put(InWorkspace(path), content);
        Put(OnServer(path), content);
    }

    public void PutInWorkspace(string path, string content = "content", int minutes = 0) => Put(InWorkspace(path), content, minutes);

    public void PutOnServer(string path, string content = "content", int minutes = 0) => Put(OnServer(path), content, minutes);

    /// <summary>The folder in which the service prepares files, as it makes it.</summary>
    public static string MakeStaging(string side)
    {
        using var root = OpenFolder.TryOpenRoot(side)!;
        Staging.Open(root).Dispose();
        return Path.Combine(side, Staging.FolderName);
    }

    public Item Item(string path) => Find(path) ?? throw new InvalidOperationException($"There is no item '{path}'.");

    public Item? Find(string path) => _home.Service.GetItemsByRelativePaths(Id, [path]).SingleOrDefault();

    public CommandResult Sync(string path) => _home.Service.SyncFiles([path.Length == 0 ? Root.Id : Item(path).Id]);

    public List<string> FilesInWorkspace() => FilesIn(Workspace);

    public List<string> FilesOnServer() => FilesIn(Server);

    public string PermanentId(string path) => _home.Service.GetPermanentIds([Item(path).Id]).Single().PermanentId;

    public string? PathOf(string permanentId) => _home.Service.GetItemsByPermanentIds([permanentId]).Single().Item?.RelativePath;

    private static List<string> FilesIn(string folder) => Directory
        .EnumerateFiles(folder, "*", SearchOption.AllDirectories)
        .Select(path => Path.GetRelativePath(folder, path).Replace('\\', '/'))
        .Order(StringComparer.Ordinal)
        .ToList();

    private static void Put(string path, string content, int minutes = 0)
    {
        Directory.CreateDirectory(Path.GetDirectoryName(path)!);
        File.WriteAllText(path, content);
        File.SetLastWriteTimeUtc(path, new DateTime(2024, 5, 1, 10, 0, 0, DateTimeKind.Utc).AddMinutes(minutes));
    }
}
