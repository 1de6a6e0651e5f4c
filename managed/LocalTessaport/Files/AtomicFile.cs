using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Writes the files of the home so that the complete old or new version exists at every moment.</summary>
internal static class AtomicFile
{
    private const int Attempts = 100;

    private const string TemporaryPattern = "*.tmp";

    /// <summary>Writes a file of the home; the caller holds the lock.</summary>
    public static void Write(HomeFolder home, string path, Action<Stream> write)
    {
        MakeStateFolder(home);
        HomeFile.RequireFileOrNothing(path);
        var temporary = Path.Combine(home.StateFolder, Guid.NewGuid().ToString("N") + TemporaryPattern[1..]);
        Write(temporary, path, PrivateNewFile(), write);
    }

    /// <summary>Replaces the state file by text that others may read as before; the caller holds the lock of that file.</summary>
    public static void ReplaceServiceFile(HomeFolder home, string text)
    {
        // Not in the folder of the other files in preparation: whoever holds the home's lock empties that.
        var temporary = home.ServiceFile + ".new";
        File.Delete(temporary);
        var options = PrivateNewFile();
        if (!OperatingSystem.IsWindows())
            options.UnixCreateMode = File.GetUnixFileMode(home.ServiceFile);
        Write(temporary, home.ServiceFile, options, stream => stream.Write(Encoding.UTF8.GetBytes(text)));
    }

    private static void Write(string temporary, string path, FileStreamOptions options, Action<Stream> write)
    {
        try
        {
            using (var stream = new FileStream(temporary, options))
            {
                write(stream);
                stream.Flush();
                FileHandle.Flush(stream.SafeFileHandle, path);
            }
            Replace(temporary, path);
        }
        catch
        {
            File.Delete(temporary);
            throw;
        }
    }

    public static bool HasLeavings(HomeFolder home)
    {
        if (!Directory.Exists(home.StateFolder))
            return false;
        using var left = Directory.EnumerateFiles(home.StateFolder, TemporaryPattern).GetEnumerator();
        return left.MoveNext();
    }

    /// <summary>Removes what a killed process was writing; the caller holds the lock.</summary>
    public static void RemoveLeavings(HomeFolder home)
    {
        if (!Directory.Exists(home.StateFolder))
            return;
        foreach (var left in Directory.GetFiles(home.StateFolder, TemporaryPattern))
            File.Delete(left);
    }

    private static void MakeStateFolder(HomeFolder home)
    {
        if (FileProbe.ExamineFollowingLinks(home.StateFolder) is { IsFolder: false })
            throw new IOException($"The service cannot use '{home.StateFolder}': it is not a folder. Remove it and try again.");
        Directory.CreateDirectory(home.StateFolder);
    }

    private static FileStreamOptions PrivateNewFile()
    {
        var options = new FileStreamOptions { Mode = FileMode.CreateNew, Access = FileAccess.Write, Share = FileShare.None };
        if (!OperatingSystem.IsWindows())
            options.UnixCreateMode = UnixFileMode.UserRead | UnixFileMode.UserWrite;
        return options;
    }

    /// <summary>Gives a complete file the name of another, which need not exist, in one step.</summary>
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
                // A scanner or a reader may have the target open for a moment; only Windows then refuses to replace it.
                Thread.Sleep(10);
            }
        }
    }
}
