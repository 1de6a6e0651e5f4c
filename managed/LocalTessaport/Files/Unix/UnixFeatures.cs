namespace Quorvex.Tessaport.API.Local;

/// <summary>The features that some kernels and file systems lack.</summary>
[Flags]
internal enum UnixFeatures
{
    None = 0,
    RestrictedOpening = 1,
    RenamingWithoutReplacing = 2,
    Exchanging = 4,
    HardLinks = 8,
    Leases = 16,
    Cloning = 32,
    MarkedFolders = 64,
}
