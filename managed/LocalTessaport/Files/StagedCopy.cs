using System;
using System.Collections.Generic;
using System.IO;
using System.Security.Cryptography;

namespace Quorvex.Tessaport.API.Local;

/// <summary>A file copied whole to one or both sides of a drive, with its time, not yet at its place.</summary>
internal sealed class StagedCopy : IDisposable
{
    private const int BlockSize = 128 * 1024;
    private const int Attempts = 3;

    private readonly List<string> _prepared = [];
    private readonly string _source;

    private StagedCopy(string source) => _source = source;

    public string Hash { get; private set; } = "";

    public static StagedCopy Make(string source, params DriveSide[] sides)
    {
        for (var attempt = 1; ; ++attempt)
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
            if (attempt == Attempts)
                throw new IOException($"'{source}' keeps changing while it is copied; try again when it is finished.");
        }
    }

    /// <summary>Renames the copy for one side to its place there, unless something else than expected stands there by now.</summary>
    public void Commit(int side, DriveSide target, string path, FileEntry? expected)
    {
        var place = target.PathOf(path);
        var found = target.Find(path);
        if (found?.Size != expected?.Size || found?.Modified != expected?.Modified || found?.IsFolder != expected?.IsFolder)
            throw new IOException($"'{place}' changed in the meantime; try again.");
        AtomicFile.Replace(_prepared[side], place);
    }

    public void Dispose()
    {
        foreach (var path in _prepared)
            File.Delete(path);
    }

    private bool Fill(DriveSide[] sides)
    {
        var before = Status();
        using (var input = AtomicFile.OpenForReading(_source))
        {
            var outputs = new List<FileStream>();
            try
            {
                foreach (var side in sides)
                    outputs.Add(NewFile(side));
                Pump(input, outputs);
            }
            finally
            {
                outputs.ForEach(output => output.Dispose());
            }
        }
        if (Status() is var after && (after.Size != before.Size || after.Modified != before.Modified))
            return false;
        foreach (var path in _prepared)
            TakeOver(before.Modified, path);
        return true;
    }

    private FileStream NewFile(DriveSide side)
    {
        var path = Staging.NewPath(side.Root);
        _prepared.Add(path);
        return new FileStream(path, FileMode.CreateNew, FileAccess.Write, FileShare.None, bufferSize: 0);
    }

    private void Pump(FileStream input, List<FileStream> outputs)
    {
        using var hash = IncrementalHash.CreateHash(HashAlgorithmName.SHA256);
        var block = new byte[Math.Clamp(input.Length, 1, BlockSize)];
        int count;
        while ((count = input.Read(block)) > 0)
        {
            hash.AppendData(block, 0, count);
            outputs.ForEach(output => output.Write(block, 0, count));
        }
        outputs.ForEach(output => output.Flush(flushToDisk: true));
        Hash = Convert.ToHexString(hash.GetHashAndReset()).ToLowerInvariant();
    }

    private void TakeOver(DateTime modified, string path)
    {
        File.SetLastWriteTimeUtc(path, modified);
        if (!OperatingSystem.IsWindows())
            File.SetUnixFileMode(path, File.GetUnixFileMode(_source) | UnixFileMode.UserRead | UnixFileMode.UserWrite);
    }

    private FileEntry Status() => FileProbe.FindFollowingLinks(_source) is { IsFolder: false } entry
        ? entry
        : throw new FileNotFoundException($"'{_source}' is not there or is no file.");
}
