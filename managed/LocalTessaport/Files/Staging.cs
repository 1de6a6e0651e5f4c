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

    /// <summary>Removes what is left. What cannot be removed now is harmless and goes another time.</summary>
    public static void Clear(string sideRoot)
    {
        try
        {
            if (Exists(sideRoot))
                Directory.Delete(FolderOf(sideRoot), recursive: true);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    private static string FolderOf(string sideRoot) => Path.Combine(sideRoot, FolderName);
}
