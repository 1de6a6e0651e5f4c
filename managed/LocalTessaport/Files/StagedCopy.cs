namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// A file copied completely to one or both sides of a drive, with its time and permissions, but not yet at its place. Copies can
/// be prepared by several threads at once.
/// </summary>
internal sealed class StagedCopy : IDisposable
{
    private const int Attempts = 3;

    private readonly List<StagedFile> _files = [];
    private readonly FileSource _source;

    private StagedCopy(FileSource source) => _source = source;

    /// <summary>The version that was copied: it was at its path before the copy and is still there after it.</summary>
    public FileEntry Source { get; private set; }

    /// <summary>The SHA-256 of what was copied, in hexadecimal.</summary>
    public string Hash { get; private set; } = "";

    /// <summary>Copies a file and flushes the copy.</summary>
    public static StagedCopy Make(FileSource source, params DriveSide[] sides)
    {
        var copy = Prepare(source, sides);
        try
        {
            Flush([copy]);
            return copy;
        }
        catch
        {
            copy.Dispose();
            throw;
        }
    }

    /// <summary>Copies a file; the copy must be flushed before it is committed.</summary>
    /// <exception cref="ChangedException">The file changed during each of several attempts.</exception>
    public static StagedCopy Prepare(FileSource source, params DriveSide[] sides)
    {
        for (var attempt = 1; attempt <= Attempts; ++attempt)
        {
            var copy = new StagedCopy(source);
            try
            {
                if (copy.Fill(sides))
                    return copy;
            }
            catch
            {
                copy.Dispose();
                throw;
            }
            copy.Dispose();
        }
        throw ChangedException.KeepsChanging(source.Path);
    }

    /// <summary>Flushes copies to the disk as a group.</summary>
    public static void Flush(IReadOnlyCollection<StagedCopy> copies) => GroupFlush.Run(copies.SelectMany(copy => copy._files).ToList());

    /// <summary>Renames the copy for one side to its place, unless something unexpected is there by now.</summary>
    /// <returns>The entry at the place. Its change time is unknown if another program wrote to it in that moment.</returns>
    /// <exception cref="ChangedException">Something else is there. Nothing was lost.</exception>
    public FileEntry Commit(int side, DriveSide target, string path, FileEntry? expected)
    {
        using var folder = target.OpenFolder(RelativePath.FolderOf(path));
        return _files[side].Commit(folder.Folder, path, expected);
    }

    public void Dispose()
    {
        foreach (var file in _files)
            file.Dispose();
    }

    private bool Fill(DriveSide[] sides)
    {
        using var input = _source.Open();
        Source = input.Entry;
        Step.Reached("Copy.Opened", input.Path);
        foreach (var side in sides)
            _files.Add(new StagedFile(side));
        Hash = FileCopier.Copy(input, _files);
        Step.Reached("Copy.Read", input.Path);
        if (!input.IsUnchanged)
            return false;
        foreach (var file in _files)
            file.Finish(Source);
        return true;
    }
}
