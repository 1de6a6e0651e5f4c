namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The folder at the root of a side in which files are prepared before they are renamed to their place, and to which removed
/// items go before they are deleted. It is in the side so that the rename stays within one file system. Anything
/// in it while no one holds the lock was left by a killed process.
/// </summary>
internal static class Staging
{
    public const string FolderName = ".tessaport";

    /// <summary>Ends the names of its folders in which files are prepared; the other folders in it were removed by a user.</summary>
    public const string FolderSuffix = ".files";

    private const int OwnerRights = 0x1c0;

    private static readonly FileEntry Private = new() { Kind = EntryKind.Folder, Mode = OwnerRights };

    public static string NewName() => Guid.NewGuid().ToString("N");

    /// <summary>Opens the folder and creates it if it is missing.</summary>
    public static OpenFolder Open(OpenFolder root) => OpenIn(root, FolderName);

    /// <summary>Opens a folder that only its owner can enter, and creates it if it is missing.</summary>
    public static OpenFolder OpenIn(OpenFolder parent, string name)
    {
        parent.MakeFolder(name, Private);
        return parent.TryOpen(name)
            ?? throw new IOException($"'{Path.Join(parent.Path, name)}' cannot be opened: it is not a folder. Remove it and try again.");
    }

    public static bool Exists(OpenFolder root) => root.Find(FolderName) is { IsFolder: true };

    /// <summary>Puts back items that a killed process took out before it had checked them, and removes the rest.</summary>
    /// <remarks>Leftovers that cannot be removed now are harmless and are removed later.</remarks>
    public static void Clear(OpenFolder root)
    {
        try
        {
            using var staging = root.TryOpen(FolderName);
            if (staging is null)
                return;
            Recover(root, staging);
            if (staging.Empty())
                root.RemoveFolder(FolderName);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
    }

    private static void Recover(OpenFolder root, OpenFolder staging)
    {
        ReplacementRecord.Recover(root, staging);
        foreach (var (name, entry) in staging.Read())
        {
            if (!entry.IsFolder || !name.EndsWith(FolderSuffix, StringComparison.Ordinal))
                continue;
            using var folder = staging.TryOpen(name);
            if (folder is not null)
                ReplacementRecord.Recover(root, folder);
        }
    }
}
