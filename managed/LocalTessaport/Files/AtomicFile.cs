using System;
using System.IO;
using System.Threading;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Writes files so that at every moment the old or the new one stands there whole.</summary>
internal static class AtomicFile
{
    private const int Attempts = 20;

    /// <summary>Ends the name of every file in preparation.</summary>
    public const string TemporarySuffix = ".tmp";

    public static void Write(string path, Action<Stream> write)
    {
        Directory.CreateDirectory(Path.GetDirectoryName(path)!);
        var temporary = $"{path}.{Guid.NewGuid():N}{TemporarySuffix}";
        try
        {
            using (var stream = new FileStream(temporary, FileMode.CreateNew, FileAccess.Write, FileShare.None))
            {
                write(stream);
                stream.Flush(flushToDisk: true);
            }
            Replace(temporary, path);
        }
        catch
        {
            File.Delete(temporary);
            throw;
        }
    }

    /// <summary>Opens a file without hindering its replacement.</summary>
    public static FileStream OpenForReading(string path) =>
        new(path, FileMode.Open, FileAccess.Read, FileShare.ReadWrite | FileShare.Delete, 64 * 1024);

    /// <summary>Renames a prepared file over its target.</summary>
    public static void Replace(string prepared, string target)
    {
        for (var attempt = 1; ; ++attempt)
        {
            try
            {
                File.Move(prepared, target, overwrite: true);
                return;
            }
            catch (Exception e) when (OperatingSystem.IsWindows() && attempt < Attempts
                && e is IOException or UnauthorizedAccessException && File.Exists(prepared) && !Directory.Exists(target))
            {
                // A scanner or a reader has the target open for a moment; elsewhere that hinders nobody.
                Thread.Sleep(10);
            }
        }
    }
}
