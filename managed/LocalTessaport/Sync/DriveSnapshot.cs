namespace Quorvex.Tessaport.API.Local;

/// <summary>Both sides of a drive, or of a part of it, at one moment, in one tree.</summary>
internal sealed class DriveSnapshot
{
    private readonly LocalDrive _drive;
    private readonly SnapshotNode _root;
    private readonly Dictionary<FileIdentity, SnapshotNode>?[] _byIdentity = new Dictionary<FileIdentity, SnapshotNode>?[2];

    private DriveSnapshot(LocalDrive drive, SnapshotNode root)
    {
        _drive = drive;
        _root = root;
    }

    /// <summary>The item that was asked for.</summary>
    public SnapshotNode Top { get; private set; } = null!;

    public bool IsEntireDrive => Top.IsRoot;

    /// <summary>How many files and folders were seen when the snapshot was taken.</summary>
    public int Count { get; private set; }

    /// <summary>Looks at an item, the folders above it and everything in it.</summary>
    public static DriveSnapshot Take(LocalDrive drive, string path)
    {
        var snapshot = Begin(drive, path);
        snapshot.LookInside(snapshot.Top);
        return snapshot;
    }

    /// <summary>Looks at an item and the folders above it; what is in it is seen with <see cref="LookInto"/>.</summary>
    public static DriveSnapshot Begin(LocalDrive drive, string path)
    {
        var snapshot = new DriveSnapshot(drive, SnapshotNode.MakeRoot());
        snapshot.Top = snapshot.LookAt(path);
        return snapshot;
    }

    /// <summary>Looks at what is directly in a folder, unless the folder is left out; does nothing for a file.</summary>
    /// <param name="folder">The folder.</param>
    /// <param name="known">The files for which no nodes are needed; null for none.</param>
    public void LookInto(SnapshotNode folder, SyncedFiles? known = null)
    {
        if (!folder.IsFolderOnEither || folder.LeftOutBy is not null)
            return;
        var path = folder.Path;
        known?.Begin(path);
        foreach (var side in SideNames.Both)
            Read(folder, path, side, known);
        known?.PutBack(folder);
        foreach (var child in folder.Inner())
            Judge(child);
    }

    /// <summary>The part of it at a path.</summary>
    public DriveSnapshot PartAt(string path) => new(_drive, _root) { Top = Place(path) };

    /// <summary>The node at a path, which is made if it is missing.</summary>
    public SnapshotNode Place(string path)
    {
        var node = _root;
        foreach (var name in path.Split('\\', StringSplitOptions.RemoveEmptyEntries))
            node = node.GetOrAdd(name);
        Judge(node);
        return node;
    }

    public SnapshotNode? Find(string path)
    {
        var node = _root;
        foreach (var name in path.Split('\\', StringSplitOptions.RemoveEmptyEntries))
        {
            if (node.Child(name) is not { } child)
                return null;
            node = child;
        }
        return node;
    }

    /// <summary>The folders above the item that was asked for, the outermost first, without the root.</summary>
    public IEnumerable<SnapshotNode> Above()
    {
        var folders = new Stack<SnapshotNode>();
        for (var folder = Top.Parent; folder is { IsRoot: false }; folder = folder.Parent)
            folders.Push(folder);
        return folders;
    }

    /// <summary>The place of a file or folder on one side; null if it is not in this part of the drive.</summary>
    public SnapshotNode? Find(SideName side, FileIdentity identity)
    {
        if (!identity.IsKnown)
            return null;
        var nodes = _byIdentity[(int)side] ??= IdentitiesOn(side);
        return nodes.TryGetValue(identity, out var node) && node[side]?.Identity == identity ? node : null;
    }

    /// <summary>Records that an item of a side, with everything in it, has moved.</summary>
    public void Move(SideName side, SnapshotNode from, SnapshotNode to)
    {
        var pending = new Stack<(SnapshotNode From, SnapshotNode To)>();
        pending.Push((from, to));
        while (pending.TryPop(out var pair))
        {
            Put(side, pair.To, pair.From[side]);
            pair.From[side] = null;
            Judge(pair.To);
            pair.To.Unreadable ??= pair.From.Unreadable;
            foreach (var child in pair.From.Children())
            {
                if (child[side] is not null)
                    pending.Push((child, pair.To.GetOrAdd(child.Name)));
            }
        }
    }

    /// <summary>Records that two items of a side have swapped places.</summary>
    public void Exchange(SideName side, SnapshotNode one, SnapshotNode other)
    {
        var aside = SnapshotNode.MakeRoot();
        Move(side, one, aside);
        Move(side, other, one);
        Move(side, aside, other);
    }

    /// <summary>Records what is at a place now.</summary>
    public void Put(SideName side, SnapshotNode node, FileEntry? entry)
    {
        node[side] = entry;
        if (entry is { Identity: { IsKnown: true } identity } && _byIdentity[(int)side] is { } nodes)
            nodes[identity] = node;
    }

    private Dictionary<FileIdentity, SnapshotNode> IdentitiesOn(SideName side)
    {
        var nodes = new Dictionary<FileIdentity, SnapshotNode>();
        foreach (var node in _root.SelfAndBelow())
        {
            if (node[side] is { Identity: { IsKnown: true } identity })
                nodes.TryAdd(identity, node);
        }
        return nodes;
    }

    private SnapshotNode LookAt(string path)
    {
        var node = _root;
        foreach (var name in path.Split('\\', StringSplitOptions.RemoveEmptyEntries))
        {
            node = node.GetOrAdd(name);
            var place = node.Path;
            foreach (var side in SideNames.Both)
                node[side] = _drive.Side(side).Find(place);
            Judge(node);
        }
        return node;
    }

    private void LookInside(SnapshotNode top)
    {
        var pending = new Stack<SnapshotNode>();
        pending.Push(top);
        while (pending.TryPop(out var folder))
        {
            LookInto(folder);
            foreach (var child in folder.Inner())
                pending.Push(child);
        }
    }

    /// <summary>Reads one side of a folder that was left out when the snapshot was taken, from where it is on the drive.</summary>
    public void ReadLater(SnapshotNode folder, SideName side, string place)
    {
        Read(folder, place, side);
        foreach (var child in folder.Children())
            Judge(child);
    }

    // A name that is a folder on one side counts as a folder.
    private void Judge(SnapshotNode node)
    {
        if (_drive.Ignored is { } rules && !node.IsRoot)
            node.LeftOutBy = node.Parent!.LeftOutBy ?? rules.PatternInFolder(node.Path, node.IsFolderOnEither);
    }

    private void Read(SnapshotNode folder, string path, SideName side, SyncedFiles? known = null)
    {
        if (!folder.IsRoot && folder[side] is not { IsFolder: true })
            return;
        var filter = known?.On(side);
        try
        {
            var entries = _drive.Side(side).Read(path, filter);
            Count += entries.Count;
            foreach (var (name, entry) in entries)
                folder.GetOrAdd(name)[side] = entry;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            folder.Unreadable = e.Message;
            known?.Withdraw();
        }
    }
}
