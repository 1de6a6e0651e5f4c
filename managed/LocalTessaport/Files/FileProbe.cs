namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Looks up a full path outside the sides. Links that lead nowhere, pipes, sockets and devices count as absent.
/// </summary>
internal static class FileProbe
{
    /// <summary>The file or folder at the path itself.</summary>
    public static FileEntry? Find(string path) => FileOrFolder(Examine(path, followLinks: false));

    /// <summary>The file or folder at the path, or at the target of the link there.</summary>
    public static FileEntry? FindFollowingLinks(string path) => FileOrFolder(Examine(path, followLinks: true));

    /// <summary>Whatever is at the path, or at the target of the link there, of any kind.</summary>
    public static FileEntry? ExamineFollowingLinks(string path) => Examine(path, followLinks: true);

    /// <summary>Whether anything is at the path, be it a link that leads nowhere.</summary>
    public static bool Exists(string path) => Examine(path, followLinks: false) is not null;

    private static FileEntry? Examine(string path, bool followLinks) =>
        System.OperatingSystem.IsWindows() ? WindowsFile.Find(path, followLinks) : UnixFile.Find(path, followLinks);

    private static FileEntry? FileOrFolder(FileEntry? entry) => entry is { Kind: EntryKind.Other } ? null : entry;
}
