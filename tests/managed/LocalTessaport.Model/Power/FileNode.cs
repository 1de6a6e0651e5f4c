namespace Quorvex.Tessaport.API.Model;

/// <summary>A file or folder as a file system knows it, apart from its names.</summary>
internal sealed class FileNode
{
    private readonly List<(int At, Func<byte[], byte[]> Apply)> _changes = [];
    private readonly List<int> _flushes = [];

    public required int Id { get; init; }
    public required bool IsFolder { get; init; }

    /// <summary>Its number in the file system while the changes were recorded; 0 for a new folder.</summary>
    public required ulong Number { get; init; }

    /// <summary>Where it is: sides and home may be on three file systems.</summary>
    public required string FileSystem { get; init; }

    /// <summary>The content at the beginning; what of it is on the disk can be less.</summary>
    public byte[] Content { get; init; } = [];

    public byte[] OnDisk { get; set; } = [];

    /// <summary>Whether a user wrote it and did not flush it.</summary>
    public bool IsUnflushedByUser { get; set; }

    public (long Seconds, long Nanoseconds)? Time { get; set; }

    public void Change(int at, Func<byte[], byte[]> apply) => _changes.Add((at, apply));

    public void Flush(int at) => _flushes.Add(at);

    /// <summary>What programs read before a change.</summary>
    public byte[] ContentBefore(int change) => After(Content, -1, change);

    /// <summary>What is certainly on the disk before a change.</summary>
    public byte[] OnDiskBefore(int change)
    {
        var flush = _flushes.LastOrDefault(at => at < change, -1);
        return flush < 0 ? OnDisk : ContentBefore(flush);
    }

    private byte[] After(byte[] content, int from, int to) =>
        _changes.Where(change => change.At > from && change.At < to).Aggregate(content, (before, change) => change.Apply(before));
}
