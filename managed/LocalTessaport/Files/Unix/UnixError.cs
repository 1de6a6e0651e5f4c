namespace Quorvex.Tessaport.API.Local;

/// <summary>The error numbers that the service tells apart; the same on every architecture that .NET supports.</summary>
internal enum UnixError
{
    None = 0,
    NotPermitted = 1,
    NoEntry = 2,
    Interrupted = 4,
    InputOutput = 5,
    NoSuchAddress = 6,
    TryAgain = 11,
    AccessDenied = 13,
    Exists = 17,
    CrossDevice = 18,
    NotAFolder = 20,
    IsAFolder = 21,
    InvalidArgument = 22,
    TooManyOpenFilesInSystem = 23,
    TooManyOpenFiles = 24,
    NoSpace = 28,
    ReadOnlyFileSystem = 30,
    NameTooLong = 36,
    NotImplemented = 38,
    NotEmpty = 39,
    TooManyLinks = 40,
    InvalidSequence = 84,
    NotSupported = 95,
    QuotaExceeded = 122,
}
