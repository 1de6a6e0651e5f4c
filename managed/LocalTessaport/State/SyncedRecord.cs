using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What stood at a path on both sides when they were last equal.</summary>
internal sealed record SyncedRecord(string Path, bool IsFolder, FileStamp LocalStamp, FileStamp RemoteStamp) : ITrackedRecord<string>
{
    public string Key => Path;
    public FileIdentity Local { get; init; }
    public FileIdentity Remote { get; init; }

    public static SyncedRecord For(string path, FileEntry local, FileEntry remote) =>
        new(path, local.IsFolder, FileStamp.Of(local), FileStamp.Of(remote)) { Local = local.Identity, Remote = remote.Identity };
}

/// <summary>Tells one version of a file from another without reading it.</summary>
internal readonly record struct FileStamp(long Time, long Size)
{
    public static FileStamp Of(FileEntry entry) => new(entry.Modified.Ticks, entry.Size);
}
