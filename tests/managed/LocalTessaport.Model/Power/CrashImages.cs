using System.Security.Cryptography;
using System.Text;

namespace Quorvex.Tessaport.API.Model;

/// <summary>A file or folder that a power failure left.</summary>
internal sealed record CrashedItem(string Path, FileNode Node, byte[] Content)
{
    /// <summary>Whether the content is what programs read before the failure.</summary>
    public required bool IsComplete { get; init; }
}

/// <summary>
/// The states that a power failure at a moment may leave. Changes of names that were not flushed are made or not, and content that was not
/// flushed is as long as before, is zeros, is cut off or is complete. Nothing is assumed of an order, but that a change of a name follows
/// the earlier ones of the same name and of its folder.
/// </summary>
internal sealed class CrashImages
{
    private const int RandomImages = 3;

    private readonly DiskLog _log;
    private readonly Random _random;
    private readonly HashSet<string> _seen = [];

    public CrashImages(DiskLog log, Random random)
    {
        _log = log;
        _random = random;
    }

    private delegate byte[] Fate(byte[] onDisk, byte[] written);

    /// <summary>The states at the moment before a change that no earlier moment had.</summary>
    public IEnumerable<List<CrashedItem>> Before(int moment)
    {
        var past = _log.NameChanges.Where(change => change.At < moment).ToList();
        var flushed = FlushedBefore(moment);
        yield return Image(moment, flushed, Lost);
        yield return Image(moment, [.. past], Lost);
        yield return Image(moment, [.. past], Zeros);
        yield return Image(moment, [.. past], Complete);
        for (var i = 0; i < RandomImages; ++i)
        {
            yield return Image(moment, WithFirst(past, flushed), Any);
            yield return Image(moment, WithSome(past, flushed), Any);
        }
    }

    /// <summary>Whether a state is seen for the first time.</summary>
    public bool IsNew(List<CrashedItem> image)
    {
        using var hash = IncrementalHash.CreateHash(HashAlgorithmName.SHA256);
        foreach (var item in image)
        {
            hash.AppendData(Encoding.UTF8.GetBytes($"{item.Path}\n{item.Node.Id}\n{item.Content.Length}\n"));
            hash.AppendData(item.Content);
        }
        return _seen.Add(Convert.ToHexString(hash.GetHashAndReset()));
    }

    private static byte[] Lost(byte[] onDisk, byte[] written) => onDisk;

    private static byte[] Complete(byte[] onDisk, byte[] written) => written;

    private static byte[] Zeros(byte[] onDisk, byte[] written) => new byte[written.Length];

    private byte[] Any(byte[] onDisk, byte[] written) => _random.Next(4) switch
    {
        0 => onDisk,
        1 => written,
        2 => new byte[written.Length],
        _ => written[..(written.Length / 2)],
    };

    private List<CrashedItem> Image(int moment, HashSet<NameChange> made, Fate fate)
    {
        var image = new List<CrashedItem>();
        var fates = new Dictionary<int, byte[]>();
        foreach (var (path, id) in DiskLog.Walk(_log.NamesAfter(made)))
        {
            var node = _log.Nodes[id];
            var written = node.ContentBefore(moment);
            // All names of a file lead to one content.
            if (!fates.TryGetValue(id, out var content))
            {
                var onDisk = node.OnDiskBefore(moment);
                fates[id] = content = onDisk.AsSpan().SequenceEqual(written) ? written : fate(onDisk, written);
            }
            image.Add(new CrashedItem(path, node, content) { IsComplete = content.AsSpan().SequenceEqual(written) });
        }
        return image;
    }

    private HashSet<NameChange> FlushedBefore(int moment)
    {
        var flushed = new HashSet<NameChange>();
        foreach (var (at, folder, fileSystem) in _log.NameFlushes.Where(flush => flush.At < moment))
        {
            foreach (var change in _log.NameChanges.Where(change => change.At < at))
            {
                if (folder is null ? change.FileSystem == fileSystem : change.Names.Any(name => name.Place.Folder == folder))
                    Make(change, flushed);
            }
        }
        return flushed;
    }

    /// <summary>On each file system the changes up to some moment, as one with a journal leaves them.</summary>
    private HashSet<NameChange> WithFirst(List<NameChange> past, HashSet<NameChange> flushed)
    {
        var made = new HashSet<NameChange>(flushed);
        foreach (var ofFileSystem in past.GroupBy(change => change.FileSystem))
        {
            foreach (var change in ofFileSystem.Take(_random.Next(ofFileSystem.Count() + 1)))
                Make(change, made);
        }
        return made;
    }

    private HashSet<NameChange> WithSome(List<NameChange> past, HashSet<NameChange> flushed)
    {
        var made = new HashSet<NameChange>(flushed);
        var share = _random.NextDouble();
        foreach (var change in past.Where(_ => _random.NextDouble() < share))
            Make(change, made);
        return made;
    }

    private static void Make(NameChange change, HashSet<NameChange> made)
    {
        var waiting = new Stack<NameChange>([change]);
        while (waiting.TryPop(out var next))
        {
            if (made.Add(next))
                next.After.ForEach(waiting.Push);
        }
    }
}
