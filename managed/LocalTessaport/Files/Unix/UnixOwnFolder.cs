namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Tells folders that the service made for this user from those that another user put in their place, who may write to the folder above.
/// See docs/local-service.md.
/// </summary>
internal static class UnixOwnFolder
{
    /// <summary>The rights of the owner, and the sticky bit as a mark: a private folder that someone renamed lacks it.</summary>
    public const uint Mode = Mark | OwnerRights;

    private const uint Mark = 0x200;
    private const uint OwnerRights = 0x1c0;
    private const uint RightsOfOthers = 0x3f;
    private const uint PrivateFile = 0x180;
    private const uint GroupMayRead = 0x20;

    /// <exception cref="ForeignFolderException">The folder was not made for this user.</exception>
    public static void Require(UnixFolder folder, SafeFileHandle handle)
    {
        var found = Status(handle, folder.Path);
        if (found.Owner == Libc.EffectiveUser() && IsMarked(found))
            return;
        // Some file systems show another owner, or other permissions, than those that were asked for.
        var (owner, keepsModes) = Try(folder, found);
        if (found.Owner != owner)
            throw Foreign(folder.Path);
        if (keepsModes && (IsOpenToOthers(found) || (!IsMarked(found) && KeepsMark(folder))))
            throw NotMade(folder.Path);
    }

    private static bool IsOpenToOthers(UnixStatus status) => (status.Mode & RightsOfOthers) != 0;

    private static bool IsMarked(UnixStatus status) => !IsOpenToOthers(status) && (status.Mode & Mark) != 0;

    // Asked of the open file: its name could be that of another one by now.
    private static (uint Owner, bool KeepsModes) Try(UnixFolder folder, UnixStatus found)
    {
        var name = Staging.NewName();
        using var file = Create(folder, name, found);
        try
        {
            var made = Status(file, folder.Path);
            var canChange = Libc.SetMode(file, PrivateFile | GroupMayRead) == 0;
            return (made.Owner, canChange && made.Mode == PrivateFile && Status(file, folder.Path).Mode == (PrivateFile | GroupMayRead));
        }
        finally
        {
            folder.TryDelete(name);
        }
    }

    // No one else can enter the folder.
    private static bool KeepsMark(UnixFolder folder)
    {
        var name = Staging.NewName();
        folder.MakeOwnFolder(name);
        try
        {
            return folder.Find(name) is { } made && (made.Mode & Mark) != 0;
        }
        finally
        {
            folder.RemoveFolder(name);
        }
    }

    private static SafeFileHandle Create(UnixFolder folder, string name, UnixStatus found)
    {
        try
        {
            return folder.CreateFile(name);
        }
        catch (UnauthorizedAccessException)
        {
            throw found.Owner == Libc.EffectiveUser() ? NotMade(folder.Path) : Foreign(folder.Path);
        }
    }

    private static UnixStatus Status(SafeFileHandle handle, string path) =>
        Libc.Status(handle, "", Libc.EmptyPath, UnixStatus.BasicAndBirth, out var status) == 0
            ? status
            : throw UnixFailure.Last(path, "examined");

    private static ForeignFolderException Foreign(string path) => new(
        $"'{path}' belongs to another user, whose service syncs now or was ended during a sync, so it is not used. Try again later; if it is "
        + "still there, have it removed by its owner.");

    private static ForeignFolderException NotMade(string path) => new(
        $"'{path}' was not made by the service, so it is not used: it may hold files of yours. Rename it to another name, then try again.");
}
