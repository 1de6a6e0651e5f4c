namespace Quorvex.Tessaport.API.Local;

/// <summary>Makes the exceptions for calls that failed.</summary>
internal static class WindowsFailure
{
    private const int AccessDenied = 5;
    private const int SharingViolation = 32;
    private const int DiskFull = 112;

    /// <summary>The exception for the last call that sets an error number.</summary>
    public static Exception Last(string path, string action) => For(Marshal.GetLastPInvokeError(), path, action);

    public static Exception For(WindowsStatus status, string path, string action) => For(NativeFile.ToError(status), path, action);

    /// <summary>Whether a status means that nothing has the name. Any other one may hide something that has it.</summary>
    public static bool MeansAbsent(WindowsStatus status) => status is
        WindowsStatus.NoSuchFile or WindowsStatus.NameInvalid or WindowsStatus.NameNotFound or WindowsStatus.PathNotFound
        or WindowsStatus.PathSyntaxBad or WindowsStatus.DeletePending or WindowsStatus.NotAFolder;

    public static Exception For(int error, string path, string action)
    {
        var message = $"'{path}' cannot be {action}: {Marshal.GetPInvokeErrorMessage(error).TrimEnd('.', ' ')}.{Remedy(error)}";
        return error == AccessDenied
            ? new UnauthorizedAccessException(message)
            : new IOException(message, unchecked((int)0x80070000) | error);
    }

    private static string Remedy(int error) => error switch
    {
        AccessDenied => " Change its permissions or those of its folder, then try again.",
        SharingViolation => " Close it in the other program, then try again.",
        DiskFull => " Make room, then try again.",
        _ => "",
    };
}
