using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What the file system says of one file or folder.</summary>
internal readonly record struct FileEntry(bool IsFolder, long Size, DateTime Modified, FileIdentity Identity);
