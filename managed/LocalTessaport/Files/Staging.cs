using System;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The folder at the root of a side in which files are prepared before they are renamed to their place, and to which removed
/// items go before they are deleted. It lies in the side so that the rename stays within one file system. Whatever is found
/// in it while nobody holds the lock was left by a killed process.
/// </summary>
internal static class Staging
{
    public const string FolderName = ".tessaport";

    public static string NewPath(string sideRoot)
    {
        var folder = FolderOf(sideRoot);
        if (!Directory.Exists(folder))
        {
            var made = Directory.CreateDirectory(folder);
            if (OperatingSystem.IsWindows())
                made.Attributes |= FileAttributes.Hidden;
        }
        return Path.Combine(folder, Guid.NewGuid().ToString("N"));
    }

    public static bool Exists(string sideRoot) => Directory.Exists(FolderOf(sideRoot));

    /// <summary>Moves an item out of sight in one step; it is deleted with what else is here.</summary>
    public static void MoveAside(string sideRoot, string path, bool isFolder)
    {
        if (isFolder)
            Directory.Move(path, NewPath(sideRoot));
        else
            File.Move(path, NewPath(sideRoot));
    }

    /// <summary>Removes what is here. What cannot be removed now is harmless and goes another time.</summary>
    public static void Clear(string sideRoot)
    {
        if (!Exists(sideRoot))
            return;
        try
        {
            Delete(FolderOf(sideRoot));
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    private static void Delete(string folder)
    {
        try
        {
            Directory.Delete(folder, recursive: true);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            MakeDeletable(new DirectoryInfo(folder));
            Directory.Delete(folder, recursive: true);
        }
    }

    // Write protection is meant for what is in use, not for what was asked to be deleted.
    private static void MakeDeletable(DirectoryInfo folder)
    {
        if (OperatingSystem.IsWindows())
            folder.Attributes &= ~FileAttributes.ReadOnly;
        else
            folder.UnixFileMode |= UnixFileMode.UserRead | UnixFileMode.UserWrite | UnixFileMode.UserExecute;
        foreach (var entry in folder.EnumerateFileSystemInfos())
        {
            if (entry.LinkTarget is not null)
                continue;
            if (entry is DirectoryInfo inner)
                MakeDeletable(inner);
            else if (OperatingSystem.IsWindows())
                entry.Attributes &= ~FileAttributes.ReadOnly;
        }
    }

    private static string FolderOf(string sideRoot) => Path.Combine(sideRoot, FolderName);
}
