namespace Quorvex.Tessaport.API.Local;

/// <summary>A file that is held open for reading, and its properties when it was opened.</summary>
internal sealed class OpenedFile(SafeFileHandle handle, string path, FileEntry entry) : IDisposable
{
    public SafeFileHandle Handle { get; } = handle;

    /// <summary>Where it was opened, for messages.</summary>
    public string Path { get; } = path;

    /// <summary>Its properties when it was opened.</summary>
    public FileEntry Entry { get; } = entry;

    /// <summary>Whether it is unchanged since it was opened.</summary>
    public bool IsUnchanged => FileHandle.EntryOf(Handle, Path).IsUnchangedSince(Entry);

    public int Read(Span<byte> block, long offset) => FileHandle.Read(Handle, block, offset, Path);

    public void Dispose() => Handle.Dispose();
}
