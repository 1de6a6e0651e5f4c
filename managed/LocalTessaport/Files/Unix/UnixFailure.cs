namespace Quorvex.Tessaport.API.Local;

/// <summary>Makes the exceptions for calls that failed.</summary>
internal static class UnixFailure
{
    /// <summary>The exception for the last call.</summary>
    public static Exception Last(string path, string action) => For(Libc.LastError, path, action);

    public static Exception For(UnixError error, string path, string action)
    {
        var message = $"'{path}' cannot be {action}: {Marshal.GetPInvokeErrorMessage((int)error)}.{Remedy(error)}";
        return error switch
        {
            UnixError.AccessDenied or UnixError.NotPermitted => new UnauthorizedAccessException(message),
            UnixError.NoEntry => new FileNotFoundException(message, path),
            _ => new IOException(message, (int)error),
        };
    }

    /// <summary>Whether an error means that nothing has the name. Any other error may hide something that has it.</summary>
    public static bool MeansAbsent(UnixError error) => error is
        UnixError.NoEntry or UnixError.NotAFolder or UnixError.NameTooLong or UnixError.InvalidArgument or UnixError.InvalidSequence;

    private static string Remedy(UnixError error) => error switch
    {
        UnixError.AccessDenied or UnixError.NotPermitted => " Change its permissions or those of its folder, then try again.",
        UnixError.TooManyOpenFiles or UnixError.TooManyOpenFilesInSystem => " Close files or raise the limit of open files, then try again.",
        UnixError.NoSpace or UnixError.QuotaExceeded => " Make room, then try again.",
        UnixError.InputOutput => " Check the disk.",
        _ => "",
    };
}
