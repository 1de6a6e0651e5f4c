namespace Quorvex.Tessaport.API.Tests;

/// <summary>How the service writes its own files.</summary>
public sealed class AtomicFileTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly HomeFolder _folder = HomeFolder.Locate();

    public void Dispose() => _home.Dispose();

    [UnixFact]
    public void ATemporaryFileIsReadableByItsOwnerOnly()
    {
        AtomicFile.Write(_folder, _folder.ClipboardFile, _ =>
            Assert.Equal((UnixFileMode)0b110_000_000, UnixCalls.ModeOf(Directory.GetFiles(_folder.StateFolder).Single())));
    }
}
