namespace Quorvex.Tessaport.API.Local;

/// <summary>The status codes that the service tells apart.</summary>
internal enum WindowsStatus : uint
{
    Success = 0,
    NoMoreFiles = 0x80000006,
    NoSuchFile = 0xC000000F,
    AccessDenied = 0xC0000022,
    NameInvalid = 0xC0000033,
    NameNotFound = 0xC0000034,
    NameCollision = 0xC0000035,
    PathNotFound = 0xC000003A,
    PathSyntaxBad = 0xC000003B,
    SharingViolation = 0xC0000043,
    DeletePending = 0xC0000056,
    NotAFolder = 0xC0000103,
    CannotDelete = 0xC0000121,
}
