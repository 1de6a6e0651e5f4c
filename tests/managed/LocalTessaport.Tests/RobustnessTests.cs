namespace Quorvex.Tessaport.API.Tests;

public sealed class RobustnessTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public RobustnessTests() => _drive = _home.AddDrive();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void WhatAKilledProcessWasPreparingIsRemovedByTheNextRequest()
    {
        _drive.PutBoth("a.txt");
        _home.Service.Discover();
        TestDrive.MakeStaging(_drive.Workspace);
        TestDrive.MakeStaging(_drive.Server);
        _drive.PutInWorkspace(".tessaport/half", "ha");
        _drive.PutOnServer(".tessaport/folder/half", "ha");
        var halfState = Path.Combine(_home.Root, "state", "x.json.1.tmp");
        File.WriteAllText(halfState, "{");

        Assert.Single(_home.Service.GetFolderContents(_drive.Root.Id));

        Assert.Equal(["a.txt"], _drive.FilesInWorkspace());
        Assert.Equal(["a.txt"], _drive.FilesOnServer());
        Assert.False(File.Exists(halfState));
    }

    [Fact]
    public void ASideThatCannotBeWrittenLeavesNothingHalfDone()
    {
        _drive.PutBoth("a.txt", "old");
        _home.Service.Discover();
        // A file in the place of the folder in which files are prepared.
        File.WriteAllText(_drive.OnServer(".tessaport"), "");

        var added = _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "new"), _home.MakeSource("b.txt")]);
        _drive.PutInWorkspace("a.txt", "changed", 3);
        var synced = _drive.Sync("");
        var deleted = _home.Service.DeleteItems([_drive.Item("a.txt").Id]);

        Assert.False(added.IsSuccess || synced.IsSuccess || deleted.IsSuccess);
        Assert.Empty(added.ItemsCreated.Concat(added.ItemsUpdated).Concat(synced.ItemsUpdated).Concat(deleted.ItemsDeleted));
        Assert.Equal(["a.txt"], _drive.FilesInWorkspace());
        Assert.Equal("changed", File.ReadAllText(_drive.InWorkspace("a.txt")));
        Assert.Equal("old", File.ReadAllText(_drive.OnServer("a.txt")));
    }

    [Fact]
    public void ManyThreadsChangeOneDriveWithoutLosingAnything()
    {
        var root = _drive.Root.Id;
        var sources = Enumerable.Range(0, 40).Select(i => _home.MakeSource($"{i}.txt", $"content {i}")).ToList();

        Parallel.ForEach(sources, new ParallelOptions { MaxDegreeOfParallelism = 8 }, source =>
        {
            var service = new TessaportService();
            var item = service.AddFiles(root, [source]).ItemsCreated.Single();
            Assert.Equal(Result.Success, service.GetPermanentIds([item.Id]).Single().Result);
        });

        Assert.Equal(40, _home.Service.GetFolderContents(root).Count(item => item is { IsInWorkspace: true, IsOnServer: true }));
        var ids = _home.Service.GetPermanentIds([.. _home.Service.GetFolderContents(root).Select(item => item.Id)]).ToList();
        Assert.Equal(40, ids.Select(id => id.PermanentId).Distinct().Count());
    }

    [Fact]
    public void ProcessesThatChangeOneHomeWaitForOneAnother()
    {
        var sources = Enumerable.Range(0, 3).Select(i => MakeSources($"set{i}")).ToList();
        var workers = sources.ConvertAll(folder => StartWorker("add-once", folder));

        foreach (var worker in workers)
        {
            worker.WaitForExit();
            Assert.Equal(0, worker.ExitCode);
            worker.Dispose();
        }

        Assert.Equal(60, _drive.FilesInWorkspace().Count);
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        var ids = _home.Service.GetPermanentIds([.. _home.Service.GetFolderContents(_drive.Root.Id).Select(item => item.Id)]).ToList();
        Assert.Equal(60, ids.Select(id => id.PermanentId).Distinct().Count());
    }

    [Fact]
    public void AFolderThatWasProtectedIsDeletedWithoutLeavings()
    {
        _drive.PutBoth("folder/inner/a.txt");
        if (OperatingSystem.IsWindows())
            File.SetAttributes(_drive.InWorkspace("folder/inner/a.txt"), FileAttributes.ReadOnly);
        else
            File.SetUnixFileMode(_drive.InWorkspace("folder/inner"), UnixFileMode.UserRead | UnixFileMode.UserExecute);

        Assert.True(_home.Service.DeleteItems([_drive.Item("folder").Id]).IsSuccess);

        Assert.Empty(Directory.GetFileSystemEntries(_drive.Workspace));
        Assert.Empty(Directory.GetFileSystemEntries(_drive.Server));
    }

    [UnixFact]
    public void PipesAreNeitherListedNorRead()
    {
        _drive.PutInWorkspace("a.txt");
        using (var make = Process.Start("mkfifo", [_drive.InWorkspace("pipe")]))
            make.WaitForExit();

        Assert.True(_drive.Sync("").IsSuccess);

        Assert.Equal(["a.txt"], _home.Service.GetFolderContents(_drive.Root.Id).Select(item => item.Name));
        Assert.False(_home.Service.CanAddFiles(_drive.Root.Id, [_drive.InWorkspace("pipe")]));
    }

    [Fact]
    public void ADeepFolderWithLongNamesIsSyncedAndDeletedCompletely()
    {
        var path = string.Join('/', Enumerable.Repeat(new string('n', 60), 12));
        _drive.PutInWorkspace(path + "/a.txt");

        Assert.True(_drive.Sync("").IsSuccess);
        Assert.True(File.Exists(_drive.OnServer(path + "/a.txt")));
        Assert.Equal(Result.Success, _home.Service.GetItemsByWorkspacePaths([_drive.WorkspacePath(path + "/a.txt")]).Single().Result);
        Assert.True(_home.Service.DeleteItems([_drive.Item(path.Split('/')[0]).Id]).IsSuccess);
        Assert.Empty(_drive.FilesOnServer());
    }

    private string MakeSources(string set)
    {
        for (var i = 0; i < 20; ++i)
            _home.MakeSource($"{set}/{set}-{i}.txt", $"{set} {i}");
        return Path.Combine(_home.Root, "sources", set);
    }

    private Process StartWorker(params string[] arguments)
    {
        var start = new ProcessStartInfo(Worker.Executable, arguments);
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        return Process.Start(start)!;
    }
}
