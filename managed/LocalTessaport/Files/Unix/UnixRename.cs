namespace Quorvex.Tessaport.API.Local;

/// <summary>Renames without replacing anything unseen, by the means that the kernel and the file system offer.</summary>
internal static class UnixRename
{
    /// <summary>Whether an error means that the kernel or the file system does not support the operation.</summary>
    public static bool MeansMissing(UnixError error) =>
        error is UnixError.InvalidArgument or UnixError.NotImplemented or UnixError.NotSupported or UnixError.NotPermitted;

    /// <summary>Renames unless something has the new name; then the error is Exists.</summary>
    public static UnixError WithoutReplacing(SafeHandle from, string name, SafeHandle to, string newName)
    {
        var error = IsMissing(UnixFeatures.RenamingWithoutReplacing)
            ? UnixError.InvalidArgument
            : Result(Libc.Rename(from, name, to, newName, Libc.RenameNoReplace));
        return MeansMissing(error) ? LinkThenRemove(from, name, to, newName) : error;
    }

    public static UnixError Exchange(SafeHandle one, string name, SafeHandle other, string otherName) =>
        IsMissing(UnixFeatures.Exchanging)
            ? UnixError.InvalidArgument
            : Result(Libc.Rename(one, name, other, otherName, Libc.RenameExchange));

    // A link fails when something has the new name; folders and some file systems cannot have one, and those of mounted remotes
    // say so with an I/O error.
    private static UnixError LinkThenRemove(SafeHandle from, string name, SafeHandle to, string newName)
    {
        var error = IsMissing(UnixFeatures.HardLinks) ? UnixError.NotPermitted : Result(Libc.Link(from, name, to, newName, 0));
        if (MeansMissing(error) || error == UnixError.InputOutput)
            return LookThenRename(from, name, to, newName);
        return error == UnixError.None ? Result(Libc.Remove(from, name, 0)) : error;
    }

    private static UnixError LookThenRename(SafeHandle from, string name, SafeHandle to, string newName)
    {
        var error = Result(Libc.Status(to, newName, Libc.StatusNoFollow, UnixStatus.BasicAndBirth, out _));
        if (error == UnixError.None)
            return UnixError.Exists;
        return error == UnixError.NoEntry ? Result(Libc.Rename(from, name, to, newName, 0)) : error;
    }

    private static bool IsMissing(UnixFeatures feature) => (UnixPath.Missing & feature) != 0;

    private static UnixError Result(int returned) => returned == 0 ? UnixError.None : Libc.LastError;
}
