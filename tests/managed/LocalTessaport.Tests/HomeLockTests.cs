namespace Quorvex.Tessaport.API.Tests;

public sealed class HomeLockTests : IDisposable
{
    private const string Disable = "DOTNET_SYSTEM_IO_DISABLEFILELOCKING";

    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [Theory]
    [InlineData("0", "0")]
    [InlineData("0", "1")]
    [InlineData("1", "0")]
    [InlineData("1", "1")]
    public void OneProcessAtATimeHoldsItWhateverDotNetDoesWithLocks(string firstDisables, string secondDisables)
    {
        using var first = StartLocker(firstDisables);
        Assert.Equal("taken", first.StandardOutput.ReadLine());
        Assert.Equal("held", AnswerOf(StartLocker(secondDisables)));

        End(first);

        Assert.Equal("taken", AnswerOf(StartLocker(secondDisables)));
    }

    [Fact]
    public void OneThreadAtATimeHoldsIt()
    {
        using (HomeLock.Acquire(HomeFolder.Locate()))
            Assert.Null(HomeLock.TryAcquire(HomeFolder.Locate()));

        using var again = HomeLock.TryAcquire(HomeFolder.Locate());
        Assert.NotNull(again);
    }

    [Fact]
    public void AKilledHolderReleasesIt()
    {
        using var locker = StartLocker("1");
        Assert.Equal("taken", locker.StandardOutput.ReadLine());

        locker.Kill();
        locker.WaitForExit();

        using var held = HomeLock.TryAcquire(HomeFolder.Locate());
        Assert.NotNull(held);
    }

    [Fact]
    public void AnyFailureButAnotherHolderIsReportedAtOnce()
    {
        var path = Path.Combine(_home.Root, "lock");
        Directory.CreateDirectory(path);
        var waited = Stopwatch.StartNew();

        var thrown = Assert.Throws<IOException>(() => HomeLock.Acquire(HomeFolder.Locate()));

        Assert.Contains(path, thrown.Message);
        Assert.True(waited.Elapsed < TimeSpan.FromMinutes(1));
    }

    [UnixFact]
    public void ALockFileThatCannotBeOpenedIsReportedAtOnce()
    {
        File.CreateSymbolicLink(Path.Combine(_home.Root, "lock"), "lock");
        var waited = Stopwatch.StartNew();

        Assert.Contains("lock", Assert.ThrowsAny<IOException>(() => HomeLock.Acquire(HomeFolder.Locate())).Message);

        Assert.True(waited.Elapsed < TimeSpan.FromMinutes(1));
    }

    private Process StartLocker(string disable)
    {
        var start = new ProcessStartInfo(Worker.Executable, "lock") { RedirectStandardInput = true, RedirectStandardOutput = true };
        start.Environment["TESSAPORT_HOME"] = _home.Root;
        start.Environment[Disable] = disable;
        return Process.Start(start)!;
    }

    private static string? AnswerOf(Process locker)
    {
        using (locker)
        {
            var answer = locker.StandardOutput.ReadLine();
            End(locker);
            return answer;
        }
    }

    private static void End(Process locker)
    {
        locker.StandardInput.Close();
        locker.WaitForExit();
        Assert.Equal(0, locker.ExitCode);
    }
}
