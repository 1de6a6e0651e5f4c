namespace Quorvex.Tessaport.API.Local;

/// <summary>A set of paths that finds those below a folder without looking at the others.</summary>
internal sealed class PathTree
{
    private readonly Node _root = new();

    public void Add(string path)
    {
        var node = _root;
        foreach (var name in Parts(path))
        {
            node.Inner ??= new(RelativePath.Comparer);
            if (!node.Inner.TryGetValue(name, out var next))
                node.Inner[name] = next = new Node();
            node = next;
        }
        node.Path = path;
    }

    public void Remove(string path)
    {
        var trail = new Stack<(Node Folder, string Name)>();
        var node = _root;
        foreach (var name in Parts(path))
        {
            if (node.Inner is null || !node.Inner.TryGetValue(name, out var next))
                return;
            trail.Push((node, name));
            node = next;
        }
        node.Path = null;
        while (node is { Path: null, Inner: null or { Count: 0 } } && trail.TryPop(out var above))
        {
            above.Folder.Inner!.Remove(above.Name);
            node = above.Folder;
        }
    }

    /// <summary>The paths below a folder, not including its own.</summary>
    public List<string> Below(string folder)
    {
        var found = new List<string>();
        var pending = new Stack<Node>();
        if (Find(folder) is { } top)
            pending.Push(top);
        while (pending.TryPop(out var node))
        {
            foreach (var inner in node.Inner?.Values ?? (IEnumerable<Node>)[])
            {
                if (inner.Path is { } path)
                    found.Add(path);
                pending.Push(inner);
            }
        }
        return found;
    }

    private Node? Find(string path)
    {
        var node = _root;
        foreach (var name in Parts(path))
        {
            if (node.Inner is null || !node.Inner.TryGetValue(name, out var next))
                return null;
            node = next;
        }
        return node;
    }

    private static string[] Parts(string path) => path.Split('\\', StringSplitOptions.RemoveEmptyEntries);

    private sealed class Node
    {
        public string? Path { get; set; }
        public Dictionary<string, Node>? Inner { get; set; }
    }
}
