namespace Quorvex.Tessaport.API.Tests;

/// <summary>How the service writes its own files.</summary>
public sealed class HomeFileTests : IDisposable
{
    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AFailedWriteLeavesTheOldFileAndNothingElse()
    {
        var home = HomeFolder.Locate();
        AtomicFile.Write(home, home.ClipboardFile, stream => stream.Write("old"u8));

        Assert.Throws<IOException>(() => AtomicFile.Write(home, home.ClipboardFile, stream =>
        {
            stream.Write("new"u8);
            throw new IOException("The disk is full.");
        }));

        Assert.Equal("old", File.ReadAllText(home.ClipboardFile));
        Assert.Empty(Directory.GetFileSystemEntries(home.StateFolder));
    }

    [Fact]
    public void AFileThatCannotTakeItsPlaceLeavesNothing()
    {
        var home = HomeFolder.Locate();
        Directory.CreateDirectory(Path.Combine(home.ClipboardFile, "inner"));

        Assert.ThrowsAny<Exception>(() => AtomicFile.Write(home, home.ClipboardFile, stream => stream.Write("new"u8)));

        Assert.Empty(Directory.GetFileSystemEntries(home.StateFolder));
    }

    [Fact]
    public void AStateFileThatCannotBeReadIsNamedAndKept()
    {
        var drive = _home.AddDrive();
        drive.PutBoth("a.txt");
        drive.PermanentId("a.txt");
        var file = Path.Combine(_home.Root, "state", drive.Id + ".json");
        File.WriteAllText(file, "{\"version\":");

        var message = Assert.Throws<InvalidDataException>(() => drive.PermanentId("a.txt")).Message;

        Assert.Contains(file, message);
        Assert.Contains("Remove that file", message);
        Assert.Equal("{\"version\":", File.ReadAllText(file));
    }
}
