namespace Quorvex.Tessaport.API.Model;

/// <summary>A name in a folder.</summary>
internal readonly record struct NamePlace(int Folder, string Name);

/// <summary>
/// A change of names, as a file system makes it: completely or not at all. It is possible only after the changes that it depends on.
/// </summary>
internal sealed record NameChange(int At, string FileSystem, List<(NamePlace Place, int? Node)> Names, List<NameChange> After);

/// <summary>
/// What a process changed in a folder: from the state before and the record of its changes follow all states that a power failure may
/// leave.
/// </summary>
internal sealed class DiskLog
{
    private const int Top = 0;

    private readonly string _root;
    private readonly List<RecordedChange> _changes;
    private readonly Dictionary<NamePlace, int> _before = [];
    private readonly Dictionary<ulong, FileNode> _byNumber = [];
    private readonly List<FileNode> _nodes = [];

    // While the record is read: the names, and who changed them last.
    private readonly Dictionary<NamePlace, int> _now;
    private readonly Dictionary<NamePlace, NameChange> _lastChange = [];
    private readonly Dictionary<int, NameChange> _creation = [];

    /// <param name="root">The folder, as it is before the changes.</param>
    /// <param name="unflushed">The files with content that may not be on the disk.</param>
    /// <param name="change">Makes the changes, and returns their record.</param>
    public DiskLog(string root, IReadOnlySet<string> unflushed, Func<List<RecordedChange>> change)
    {
        _root = root;
        NewNode(isFolder: true, root, [], 0);
        TakeStock(Top, root, unflushed);
        _now = new Dictionary<NamePlace, int>(_before);
        _changes = change();
        for (var at = 0; at < _changes.Count; ++at)
            Read(at, _changes[at]);
    }

    public int Count => _changes.Count;

    public IReadOnlyList<RecordedChange> Changes => _changes;

    public List<NameChange> NameChanges { get; } = [];

    /// <summary>The flushes of names: of a folder, or of a file system.</summary>
    public List<(int At, int? Folder, string FileSystem)> NameFlushes { get; } = [];

    public IReadOnlyList<FileNode> Nodes => _nodes;

    /// <summary>The names after some of the changes.</summary>
    public Dictionary<NamePlace, int> NamesAfter(IReadOnlySet<NameChange> made)
    {
        var names = new Dictionary<NamePlace, int>(_before);
        foreach (var change in NameChanges.Where(made.Contains))
        {
            foreach (var (place, node) in change.Names)
                Set(names, place, node);
        }
        return names;
    }

    /// <summary>Each path with its node, folders before what is in them.</summary>
    public static List<(string Path, int Node)> Walk(Dictionary<NamePlace, int> names)
    {
        var byFolder = names.ToLookup(name => name.Key.Folder);
        var found = new List<(string, int)>();
        var folders = new Queue<(string Path, int Node)>([("", Top)]);
        while (folders.TryDequeue(out var folder))
        {
            foreach (var (place, node) in byFolder[folder.Node].OrderBy(name => name.Key.Name, StringComparer.Ordinal))
            {
                var path = folder.Path + place.Name;
                found.Add((path, node));
                folders.Enqueue((path + '/', node));
            }
        }
        return found;
    }

    private static void Set(Dictionary<NamePlace, int> names, NamePlace place, int? node)
    {
        if (node is { } present)
            names[place] = present;
        else
            names.Remove(place);
    }

    private void TakeStock(int folder, string path, IReadOnlySet<string> unflushed)
    {
        foreach (var entry in new DirectoryInfo(path).EnumerateFileSystemInfos())
        {
            var isFolder = entry is DirectoryInfo;
            var number = NativeCalls.NumberOf(entry.FullName);
            var node = NewNode(isFolder, entry.FullName, isFolder ? [] : File.ReadAllBytes(entry.FullName), number);
            _before[new(folder, entry.Name)] = node.Id;
            _byNumber[number] = node;
            node.IsUnflushedByUser = unflushed.Contains(entry.FullName);
            node.OnDisk = node.IsUnflushedByUser ? [] : node.Content;
            if (isFolder)
                TakeStock(node.Id, entry.FullName, unflushed);
        }
    }

    private FileNode NewNode(bool isFolder, string path, byte[] content, ulong number)
    {
        var node = new FileNode { Id = _nodes.Count, Number = number, IsFolder = isFolder, FileSystem = FileSystemOf(path), Content = content };
        _nodes.Add(node);
        return node;
    }

    private string FileSystemOf(string path)
    {
        var first = Path.GetRelativePath(_root, path).Split('/')[0];
        return first is "workspace" or "server" ? first : "home";
    }

    private void Read(int at, RecordedChange change)
    {
        switch (change.Kind)
        {
            case "create":
                _byNumber[change.Number] = NewNode(isFolder: false, change.Words[0], [], change.Number);
                ChangeNames(at, change, (change.Words[0], _byNumber[change.Number].Id));
                break;
            case "mkdir":
                var made = NewNode(isFolder: true, change.Words[0], [], 0);
                ChangeNames(at, change, (change.Words[0], made.Id));
                _creation[made.Id] = NameChanges[^1];
                break;
            case "unlink" or "rmdir":
                ChangeNames(at, change, (change.Words[0], null));
                break;
            case "link":
                ChangeNames(at, change, (change.Words[1], NodeAt(change.Words[0])));
                break;
            case "rename":
                ChangeNames(at, change, (change.Words[0], null), (change.Words[1], NodeAt(change.Words[0])));
                break;
            case "exchange":
                ChangeNames(at, change, (change.Words[0], NodeAt(change.Words[1])), (change.Words[1], NodeAt(change.Words[0])));
                break;
            case "flush-all":
                FlushAll(at, FileSystemOf(change.Words[0]));
                break;
            case "flush" when FolderAt(change.Words[1]) is not null:
                NameFlushes.Add((at, FolderAt(change.Words[1]), FileSystemOf(change.Words[1])));
                break;
            default:
                ChangeContent(at, change);
                break;
        }
    }

    private void FlushAll(int at, string fileSystem)
    {
        NameFlushes.Add((at, null, fileSystem));
        foreach (var node in _nodes.Where(node => node.FileSystem == fileSystem))
            node.Flush(at);
    }

    private void ChangeContent(int at, RecordedChange change)
    {
        var node = _byNumber[change.Number];
        switch (change.Kind)
        {
            case "flush":
                node.Flush(at);
                break;
            case "write":
                var (offset, bytes) = ((int)change.NumberAt(1), Convert.FromHexString(change.Words[2]));
                node.Change(at, before =>
                {
                    var after = new byte[Math.Max(before.Length, offset + bytes.Length)];
                    before.CopyTo(after, 0);
                    bytes.CopyTo(after, offset);
                    return after;
                });
                break;
            case "truncate":
                var length = (int)change.NumberAt(1);
                node.Change(at, before =>
                {
                    Array.Resize(ref before, length);
                    return before;
                });
                break;
            case "times":
                node.Time = (change.NumberAt(1), change.NumberAt(2));
                break;
            case "mode":
                break;
            default:
                throw new BrokenPromiseException($"The record has an unknown line: {change}");
        }
    }

    private void ChangeNames(int at, RecordedChange change, params (string Path, int? Node)[] names)
    {
        var places = names.Select(name => (Place: PlaceOf(name.Path), name.Node)).ToList();
        var after = new HashSet<NameChange>();
        foreach (var (place, _) in places)
        {
            if (_lastChange.TryGetValue(place, out var last))
                after.Add(last);
            if (_creation.TryGetValue(place.Folder, out var made))
                after.Add(made);
            // A folder is removed only when it is empty.
            if (change.Kind == "rmdir" && _now.TryGetValue(place, out var removed))
                after.UnionWith(_lastChange.Where(known => known.Key.Folder == removed).Select(known => known.Value));
        }
        var changed = new NameChange(at, FileSystemOf(names[0].Path), places, [.. after]);
        NameChanges.Add(changed);
        foreach (var (place, node) in places)
        {
            Set(_now, place, node);
            _lastChange[place] = changed;
        }
    }

    private int NodeAt(string path) => _now[PlaceOf(path)];

    private int? FolderAt(string path)
    {
        var folder = Top;
        foreach (var name in Path.GetRelativePath(_root, path).Split('/').Where(name => name != "."))
        {
            if (!_now.TryGetValue(new(folder, name), out folder))
                return null;
        }
        return _nodes[folder].IsFolder ? folder : null;
    }

    private NamePlace PlaceOf(string path) => new(
        FolderAt(Path.GetDirectoryName(path)!) ?? throw new BrokenPromiseException($"The record names a folder that it does not know: {path}"),
        Path.GetFileName(path));
}
