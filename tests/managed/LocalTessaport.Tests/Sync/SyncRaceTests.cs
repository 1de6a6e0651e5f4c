namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// Someone acts between two steps of a sync. No version is lost, and an edit that came too late is synced next time.
/// </summary>
public sealed class SyncRaceTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;
    private bool _wasSaveRefused;

    public SyncRaceTests()
    {
        _drive = _home.AddDrive();
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    // Windows cannot exchange two files.
    private static string Replaced => OperatingSystem.IsWindows() ? "Commit.SetAside" : "Commit.Exchanged";

    public static TheoryData<string, bool, bool> EditsDuringACopy
    {
        get
        {
            var data = new TheoryData<string, bool, bool>();
            foreach (var step in new[] { "Copy.Opened", "Copy.Read", "Commit.Checked", "Commit.Guarded", Replaced, "Commit.Placed" })
            {
                foreach (var isUpload in new[] { true, false })
                {
                    data.Add(step, isUpload, true);
                    data.Add(step, isUpload, false);
                }
            }
            return data;
        }
    }

    [Theory]
    [MemberData(nameof(EditsDuringACopy))]
    public void AnEditOfTheSourceDuringACopyArrives(string step, bool isUpload, bool keepsTime)
    {
        MakeSynced("a.txt", "version 1");
        var source = Path.Combine(isUpload ? _drive.Workspace : _drive.Server, "a.txt");
        Edit(source, "version 2", minutes: 1);
        using var edit = StepAction.At(step, "a.txt", _ => Edit(source, "version 3", minutes: keepsTime ? 1 : 2));

        _drive.Sync("");
        var again = _drive.Sync("");

        Assert.True(edit.WasReached);
        Assert.True(again.IsSuccess);
        RequireOnBothSides("a.txt", "version 3");
        RequireNoLeavings();
    }

    [Theory]
    [MemberData(nameof(EditsDuringACopy))]
    public void AnEditOfTheTargetDuringACopyIsKept(string step, bool isUpload, bool keepsTime)
    {
        MakeSynced("a.txt", "version 1");
        var (source, target) = isUpload ? (_drive.Workspace, _drive.Server) : (_drive.Server, _drive.Workspace);
        Edit(Path.Combine(source, "a.txt"), "version 2", minutes: 2);
        void Save() => SaveByRenaming(Path.Combine(target, "a.txt"), "version X", minutes: keepsTime ? 0 : 1);
        using var edit = StepAction.At(step, "a.txt", _ => Save());

        _drive.Sync("");
        if (_wasSaveRefused)
            Save();
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(edit.WasReached);
        Assert.Contains("version X", _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))));
        // After the exchange, or when it is saved again, the edit replaces version 2 where that is already.
        if (step is not ("Commit.Exchanged" or "Commit.Placed") && !_wasSaveRefused)
            Assert.Contains("version 2", _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))));
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        RequireNoLeavings();
    }

    [Theory]
    [InlineData(true)]
    [InlineData(false)]
    public void AnEditDuringAComparisonIsNotTakenForSynced(bool keepsTime)
    {
        _drive.PutInWorkspace("a.txt", "same", 1);
        _drive.PutOnServer("a.txt", "same", 2);
        using var edit = StepAction.At("Compare.Read", "a.txt", _ => Edit(_drive.InWorkspace("a.txt"), "edit", minutes: keepsTime ? 1 : 3));

        _drive.Sync("");
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(edit.WasReached);
        Assert.Contains("edit", _drive.FilesOnServer().Select(name => File.ReadAllText(_drive.OnServer(name))));
    }

    [Fact]
    public void ALargeFileThatIsEditedWhileItIsComparedGoesUpWithTheNextSync()
    {
        foreach (var side in new[] { _drive.Workspace, _drive.Server })
        {
            using var file = File.Create(Path.Combine(side, "large.bin"));
            file.SetLength(900L << 20);
        }
        File.SetLastWriteTimeUtc(_drive.InWorkspace("large.bin"), DateTime.UtcNow.AddDays(-1));
        File.SetLastWriteTimeUtc(_drive.OnServer("large.bin"), DateTime.UtcNow.AddDays(-2));
        using var edit = StepAction.At("Compare.Read", "large.bin", _ =>
        {
            using var file = OpenBesideOthers(_drive.InWorkspace("large.bin"));
            file.WriteByte(1);
        });

        _drive.Sync("");
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(edit.WasReached);
        using var uploaded = File.OpenRead(_drive.OnServer("large.bin"));
        Assert.Equal(1, uploaded.ReadByte());
    }

    [Theory]
    [InlineData("Move.Checked")]
    [InlineData("Move.Done")]
    public void AnEditWhileARenameIsFollowedIsKept(string step)
    {
        MakeSynced("a.txt", "version 1");
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        using var edit = StepAction.At(step, "b.txt", _ => Edit(
            File.Exists(_drive.OnServer("a.txt")) ? _drive.OnServer("a.txt") : _drive.OnServer("b.txt"), "version 2", minutes: 0));

        _drive.Sync("");
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(edit.WasReached);
        RequireOnBothSides("b.txt", "version 2");
        Assert.Equal(["b.txt"], _drive.FilesInWorkspace());
    }

    [Fact]
    public void AFileThatAppearsWhereARenameGoesIsNotReplaced()
    {
        MakeSynced("a.txt", "version 1");
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        using var appearance = StepAction.At("Move.Checked", "b.txt", _ => _drive.PutOnServer("b.txt", "a newcomer"));

        _drive.Sync("");
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(appearance.WasReached);
        Assert.Contains("a newcomer", _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))));
        Assert.Contains("version 1", _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))));
    }

    [Theory]
    [InlineData("Add.Synced")]
    [InlineData("Put.BetweenSides")]
    public void AnEditWhileAVersionIsAddedIsKept(string step)
    {
        MakeSynced("a.txt", "version 1");
        using var edit = StepAction.At(step, "a.txt", _ => Edit(_drive.OnServer("a.txt"), "theirs...", minutes: 5));

        _home.Service.AddFiles(_drive.Root.Id, [_home.MakeSource("a.txt", "added")]);
        Assert.True(_drive.Sync("").IsSuccess);

        Assert.True(edit.WasReached);
        Assert.Contains("theirs...", _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))));
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
    }

    [Fact]
    public void AnEditThatKeepsSizeAndTimeSurvivesAChangeOnTheServer()
    {
        MakeSynced("a.txt", "version 1");
        Edit(_drive.InWorkspace("a.txt"), "version 2", minutes: 0);
        Edit(_drive.OnServer("a.txt"), "version 3", minutes: 5);

        Assert.True(_drive.Sync("").IsSuccess);

        RequireOnBothSides("a.txt", "version 3");
        Assert.Contains("version 2", _drive.FilesOnServer().Select(name => File.ReadAllText(_drive.OnServer(name))));
    }

    private void MakeSynced(string path, string content)
    {
        _drive.PutInWorkspace(path, content);
        Assert.True(_drive.Sync("").IsSuccess);
    }

    private static void Edit(string path, string content, int minutes)
    {
        using (var file = OpenBesideOthers(path))
        {
            file.SetLength(content.Length);
            file.Write(System.Text.Encoding.ASCII.GetBytes(content));
        }
        File.SetLastWriteTimeUtc(path, new DateTime(2024, 5, 1, 10, 0, 0, DateTimeKind.Utc).AddMinutes(minutes));
    }

    private static FileStream OpenBesideOthers(string path) =>
        new(path, FileMode.Open, FileAccess.Write, FileShare.ReadWrite | FileShare.Delete);

    private void SaveByRenaming(string path, string content, int minutes)
    {
        var prepared = _home.MakeSource("prepared", content);
        File.SetLastWriteTimeUtc(prepared, new DateTime(2024, 5, 1, 10, 0, 0, DateTimeKind.Utc).AddMinutes(minutes));
        try
        {
            File.Move(prepared, path, overwrite: true);
        }
        catch (UnauthorizedAccessException) when (OperatingSystem.IsWindows() && !_wasSaveRefused)
        {
            // The file is held open while it is replaced. Editors report that, and their users save again.
            _wasSaveRefused = true;
        }
    }

    private void RequireOnBothSides(string path, string content)
    {
        Assert.Equal(content, File.ReadAllText(_drive.InWorkspace(path)));
        Assert.Equal(content, File.ReadAllText(_drive.OnServer(path)));
    }

    private void RequireNoLeavings()
    {
        Assert.False(Directory.Exists(_drive.InWorkspace(".tessaport")));
        Assert.False(Directory.Exists(_drive.OnServer(".tessaport")));
    }
}
