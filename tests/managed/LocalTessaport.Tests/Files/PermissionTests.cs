namespace Quorvex.Tessaport.API.Tests;

/// <summary>
/// An item without read permission is an error with its reason and never counts as absent, in a process without privileges.
/// </summary>
public sealed class PermissionTests : IDisposable
{
    private const UnixFileMode ReadOnly = UnixFileMode.UserRead;
    private const UnixFileMode EnterOnly = UnixFileMode.UserExecute;

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public PermissionTests()
    {
        _drive = _home.AddDrive();
        _drive.PutInWorkspace("folder/a.txt");
        _drive.PutInWorkspace("b.txt");
    }

    public void Dispose()
    {
        foreach (var folder in Directory.GetDirectories(_drive.Workspace))
            Protect(folder, UnixFileMode.UserRead | UnixFileMode.UserWrite | UnixFileMode.UserExecute);
        _home.Dispose();
    }

    [UnixTheory]
    [InlineData(ReadOnly)]
    [InlineData(EnterOnly)]
    [InlineData(UnixFileMode.None)]
    public void AFolderThatMayNotBeReadOrEnteredMakesASyncFail(UnixFileMode mode)
    {
        Protect(_drive.InWorkspace("folder"), mode);

        Assert.Equal(1, Run(out _, "sync-once"));

        Assert.Contains("b.txt", _drive.FilesOnServer());
        Assert.DoesNotContain("folder/a.txt", _drive.FilesOnServer());
    }

    [UnixTheory]
    [InlineData("list", "folder", ReadOnly)]
    [InlineData("list", "folder", EnterOnly)]
    [InlineData("find", @"folder\a.txt", ReadOnly)]
    [InlineData("find", @"folder\a.txt", UnixFileMode.None)]
    public void AnItemThatMayNotBeExaminedIsAnErrorThatNamesItAndTheReason(string command, string path, UnixFileMode mode)
    {
        Protect(_drive.InWorkspace("folder"), mode);

        Assert.Equal(3, Run(out var message, command, path));

        Assert.Contains(_drive.InWorkspace("folder"), message);
        Assert.Contains("Permission denied", message);
    }

    [UnixTheory]
    [InlineData(UnixFileMode.None)]
    public void AFileThatMayNotBeReadIsNotTakenForAnEmptyOne(UnixFileMode mode)
    {
        UnixCalls.SetMode(_drive.InWorkspace("b.txt"), mode);

        Assert.Equal(1, Run(out _, "sync-once"));

        Assert.DoesNotContain("b.txt", _drive.FilesOnServer());
        Assert.Contains("folder/a.txt", _drive.FilesOnServer());
    }

    [UnixFact]
    public void AFolderThatMayNotBeReadIsListedAsPending()
    {
        _drive.PutOnServer("folder/a.txt");
        _drive.PutOnServer("b.txt");
        _home.Service.SyncFiles([_drive.Root.Id]);
        Protect(_drive.InWorkspace("folder"), UnixFileMode.None);

        Assert.Equal(0, Run(out var list, "pending"));

        Assert.Contains("\"path\":\"folder\"", list);
        Assert.Contains("Permission denied", list);
    }

    private static void Protect(string path, UnixFileMode mode) => UnixCalls.SetMode(path, mode);

    private int Run(out string output, params string[] arguments)
    {
        var start = new ProcessStartInfo(Worker.Executable, arguments) { RedirectStandardOutput = true };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        if (Environment.IsPrivilegedProcess)
        {
            start.Environment["VELMORA_WORKER_DROPS_PRIVILEGES"] = "1";
            UnixCalls.Run("chown", "-R", "65534:65534", _home.Root);
        }
        using var process = Process.Start(start)!;
        output = process.StandardOutput.ReadToEnd();
        process.WaitForExit();
        return process.ExitCode;
    }
}
