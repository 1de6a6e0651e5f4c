namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The folder at the root of a side in which files are prepared before they are renamed to their place, and to which removed
/// items go before they are deleted. It is in the side so that the rename stays within one file system. Anything
/// in it while no one holds the lock was left by a killed process.
/// </summary>
internal static class Staging
{
    public const string FolderName = ".tessaport";

    /// <summary>How many folders there are for copies, for as many threads as copy at once.</summary>
    public const int CopyFolders = 4;

    public static string NewName() => Guid.NewGuid().ToString("N");

    /// <summary>Opens the folder and creates it if it is missing.</summary>
    /// <exception cref="ForeignFolderException">
    /// Another user, who may write to the side, has put a folder in its place: one of their own, or one of this user with files in it.
    /// </exception>
    public static OpenFolder Open(OpenFolder root)
    {
        var staging = OpenOrMake(root, FolderName);
        try
        {
            staging.RequireOwn();
            return staging;
        }
        catch
        {
            staging.Dispose();
            throw;
        }
    }

    /// <summary>
    /// Opens one of the folders in the staging folder in which copies are prepared. Threads that create files in one folder wait for
    /// each other, and for the thread that renames files out of it.
    /// </summary>
    public static OpenFolder OpenCopies(OpenFolder staging, int number) => OpenOrMake(staging, NameOfCopies(number));

    public static bool Exists(OpenFolder root) => root.Find(FolderName) is { IsFolder: true };

    /// <summary>Puts back items that a killed process took out before it had checked them, and removes the rest.</summary>
    /// <remarks>Leftovers that cannot be removed now are harmless and are removed later.</remarks>
    /// <returns>Why the folder is left alone, if the service did not make it for this user; otherwise null.</returns>
    public static string? Clear(OpenFolder root)
    {
        try
        {
            using var staging = root.TryOpen(FolderName);
            if (staging is null)
                return null;
            staging.RequireOwn();
            Recovery.Run(root, staging);
            for (var number = 0; number < CopyFolders; ++number)
            {
                using var copies = staging.TryOpen(NameOfCopies(number));
                if (copies is not null)
                    Recovery.Run(root, copies);
            }
            if (staging.Empty())
                root.RemoveFolder(FolderName);
        }
        catch (ForeignFolderException e)
        {
            return e.Message;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
        return null;
    }

    private static string NameOfCopies(int number) => $"copies-{number}";

    private static OpenFolder OpenOrMake(OpenFolder parent, string name)
    {
        parent.MakeOwnFolder(name);
        return parent.TryOpen(name)
            ?? throw new IOException($"'{Path.Join(parent.Path, name)}' cannot be opened: it is not a folder. Remove it and try again.");
    }
}
