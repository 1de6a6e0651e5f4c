using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Asks the file system about one path. Links, pipes, sockets and devices count as absent.</summary>
internal static class FileProbe
{
    /// <summary>What stands at the path itself.</summary>
    public static FileEntry? Find(string path) =>
        UnixStatus.IsSupported ? UnixStatus.Read(path, followLinks: false) : FindWithIdentity(path);

    /// <summary>What stands at the path or where the link there leads.</summary>
    public static FileEntry? FindFollowingLinks(string path)
    {
        if (UnixStatus.IsSupported)
            return UnixStatus.Read(path, followLinks: true);
        return FindWithoutIdentity(path) ?? FindWithoutIdentity(TargetOf(path));
    }

    private static FileEntry? FindWithIdentity(string path) =>
        FindWithoutIdentity(path) is { } entry
            ? entry with { Identity = OperatingSystem.IsWindows() ? WindowsFileNumber.Read(path) : FileIdentity.None }
            : null;

    private static FileEntry? FindWithoutIdentity(string? path)
    {
        if (string.IsNullOrEmpty(path))
            return null;
        path = PathForm.ToLiteral(path);
        var file = new FileInfo(path);
        if (file.Exists)
            return !IsLink(file) ? new FileEntry(false, file.Length, file.LastWriteTimeUtc, default) : null;
        var folder = new DirectoryInfo(path);
        return folder.Exists && !IsLink(folder)
            ? new FileEntry(true, 0, folder.LastWriteTimeUtc, default)
            : null;
    }

    // The target is looked up last: it takes opening the file.
    private static bool IsLink(FileSystemInfo info) =>
        (info.Attributes & FileAttributes.ReparsePoint) != 0 && info.LinkTarget is not null;

    private static string? TargetOf(string path)
    {
        try
        {
            return File.ResolveLinkTarget(path, returnFinalTarget: true)?.FullName;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return null;
        }
    }
}
