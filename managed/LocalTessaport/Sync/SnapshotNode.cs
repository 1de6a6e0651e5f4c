namespace Quorvex.Tessaport.API.Local;

/// <summary>One name of a drive with the entries of both sides; a folder has child nodes.</summary>
internal sealed class SnapshotNode
{
    private Dictionary<string, SnapshotNode>? _children;
    private SnapshotNode[]? _sorted;
    private FileEntry? _local;
    private FileEntry? _remote;

    private SnapshotNode(SnapshotNode? parent, string name)
    {
        Parent = parent;
        Name = name;
    }

    public static SnapshotNode MakeRoot() => new(null, RelativePath.Root);

    public SnapshotNode? Parent { get; }
    public string Name { get; }

    /// <summary>Why a side of this folder could not be read; its contents are then unknown.</summary>
    public string? Unreadable { get; set; }

    /// <summary>The pattern of the drive that leaves out this item; its contents are then unknown. Null if none does.</summary>
    public string? LeftOutBy { get; set; }

    public string Path
    {
        get
        {
            if (Parent is not { IsRoot: false })
                return Name;
            var length = Name.Length;
            for (var node = Parent; !node.IsRoot; node = node.Parent!)
                length += node.Name.Length + 1;
            return string.Create(length, this, WritePath);
        }
    }

    public bool IsRoot => Parent is null;

    public bool IsFolderOnEither => IsRoot || _local is { IsFolder: true } || _remote is { IsFolder: true };

    public FileEntry? this[SideName side]
    {
        get => side == SideName.Workspace ? _local : _remote;
        set
        {
            if (side == SideName.Workspace)
                _local = value;
            else
                _remote = value;
        }
    }

    public SnapshotNode? Child(string name) => _children?.GetValueOrDefault(name);

    public SnapshotNode GetOrAdd(string name)
    {
        _children ??= new(RelativePath.Comparer);
        if (!_children.TryGetValue(name, out var child))
        {
            _children[name] = child = new SnapshotNode(this, name);
            _sorted = null;
        }
        return child;
    }

    /// <summary>The nodes directly in this folder, in no particular order.</summary>
    public IReadOnlyCollection<SnapshotNode> Inner() => _children is null ? [] : _children.Values;

    /// <summary>Makes this node forget those in it, so that they do not stay in memory with it.</summary>
    public void ForgetInner()
    {
        _children = null;
        _sorted = null;
    }

    /// <summary>The nodes directly in this folder, by name.</summary>
    public IReadOnlyList<SnapshotNode> Children()
    {
        if (_children is null)
            return [];
        if (_sorted is null)
        {
            _sorted = [.. _children.Values];
            Array.Sort(_sorted, ByName);
        }
        return _sorted;
    }

    /// <summary>This node and those below it, folders before their contents.</summary>
    public IEnumerable<SnapshotNode> SelfAndBelow()
    {
        var pending = new Stack<SnapshotNode>();
        pending.Push(this);
        while (pending.TryPop(out var node))
        {
            yield return node;
            var children = node.Children();
            for (var i = children.Count - 1; i >= 0; --i)
                pending.Push(children[i]);
        }
    }

    private static void WritePath(Span<char> path, SnapshotNode last)
    {
        var end = path.Length;
        for (var node = last; !node.IsRoot; node = node.Parent!)
        {
            end -= node.Name.Length;
            node.Name.CopyTo(path[end..]);
            if (end > 0)
                path[--end] = '\\';
        }
    }

    /// <summary>Compares the names of two nodes of one folder, ignoring case first.</summary>
    public static int ByName(SnapshotNode a, SnapshotNode b)
    {
        var ignoringCase = string.Compare(a.Name, b.Name, StringComparison.OrdinalIgnoreCase);
        return ignoringCase != 0 ? ignoringCase : string.CompareOrdinal(a.Name, b.Name);
    }
}
