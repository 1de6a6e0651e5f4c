namespace Quorvex.Tessaport.API.Tests;

/// <summary>Everything in the staging folder of a side is removed, and does no harm until then.</summary>
public sealed class TreeRemovalTests : IDisposable
{
    // Beyond 4,096 bytes on Linux, and beyond 260 characters on Windows.
    private static readonly int Depth = OperatingSystem.IsWindows() ? 60 : 1500;

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public TreeRemovalTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void ATreeDeeperThanAnyPathIsDeleted()
    {
        MakeDeepTree(_drive.Workspace, "deep");

        Assert.True(_home.Service.DeleteItems([_drive.Item("deep").Id]).IsSuccess);

        Assert.Empty(Directory.GetFileSystemEntries(_drive.Workspace));
        Assert.Empty(_home.Service.GetFolderContents(_drive.Root.Id));
    }

    [Fact]
    public void ADeepTreeLeftInTheStagingFolderIsRemovedByTheNextRequest()
    {
        MakeDeepTree(TestDrive.MakeStaging(_drive.Workspace), "deep");

        _home.Service.Discover();

        Assert.Empty(Directory.GetFileSystemEntries(_drive.Workspace));
    }

    [UnixFact]
    public void LinksPipesProtectedFoldersAndStrangeNamesInTheStagingFolderAreRemoved()
    {
        var outside = Directory.CreateDirectory(Path.Combine(_home.Root, "outside")).FullName;
        File.WriteAllText(Path.Combine(outside, "kept.txt"), "kept");
        UnixCalls.SetMode(outside, UnixFileMode.UserRead | UnixFileMode.UserExecute);
        var staging = TestDrive.MakeStaging(_drive.Workspace);
        var inner = Directory.CreateDirectory(Path.Combine(staging, "folder", "protected")).FullName;
        Directory.CreateSymbolicLink(Path.Combine(staging, "link"), outside);
        Directory.CreateSymbolicLink(Path.Combine(inner, "link"), outside);
        UnixCalls.Run("mkfifo", Path.Combine(inner, "pipe"));
        UnixCalls.Run("sh", "-c", "touch \"$1\"/$(printf 'not\\377utf8')", "sh", inner);
        UnixCalls.SetMode(inner, UnixFileMode.None);

        _home.Service.Discover();

        Assert.Empty(Directory.GetFileSystemEntries(_drive.Workspace));
        Assert.Equal("kept", File.ReadAllText(Path.Combine(outside, "kept.txt")));
        Assert.Equal(UnixFileMode.UserRead | UnixFileMode.UserExecute, UnixCalls.ModeOf(outside));
    }

    [UnixFact]
    public void PathsLongerThanTheSystemTakesAreSyncedAndDeleted()
    {
        var path = MakeDeepTree(_drive.Workspace, "deep", names: 30, length: 200);

        Assert.True(_drive.Sync("").IsSuccess);

        using (var server = new DriveSide(_drive.Server))
            Assert.Equal(4, server.Find(path + @"\file")!.Value.Size);
        Assert.True(_home.Service.DeleteItems([_drive.Item("deep").Id]).IsSuccess);
        Assert.Empty(Directory.GetFileSystemEntries(_drive.Server));
    }

    [UnixFact]
    public void PathsLongerThanTheSystemTakesAreOpenedWithoutRestrictedOpening()
    {
        var path = MakeDeepTree(_drive.Workspace, "deep", names: 30, length: 200);
        using var without = new Without("RestrictedOpening");
        using var side = new DriveSide(_drive.Workspace);

        Assert.Equal(4, side.Find(path + @"\file")!.Value.Size);
        Assert.True(_home.Service.DeleteItems([_drive.Item("deep").Id]).IsSuccess);
    }

    /// <summary>Makes a tree with a file at its end, from within, since its path is too long.</summary>
    private static string MakeDeepTree(string root, string top, int? names = null, int length = 4)
    {
        using var side = new DriveSide(root).Opened();
        var path = top;
        side.MakeFolder(path);
        var folder = side.OpenFolder(path).Folder;
        for (var i = 0; i < (names ?? Depth); ++i)
        {
            var name = i.ToString("D4").PadRight(length, 'n');
            folder.MakeFolder(name, null);
            var next = folder.TryOpen(name)!;
            folder.Dispose();
            folder = next;
            path += '\\' + name;
        }
        using (var file = folder.CreateFile("file"))
            RandomAccess.Write(file, "deep"u8, 0);
        folder.Dispose();
        return path;
    }
}
