namespace Quorvex.Tessaport.API.Local;

/// <summary>What one pass over an item did, and what it could not do.</summary>
internal sealed class SyncProgress
{
    private readonly List<(string From, string To, bool IsExchange)> _moves = [];
    private readonly HashSet<string> _blocked = new(RelativePath.Comparer);
    private readonly Dictionary<string, Exception> _failures = new(RelativePath.Comparer);

    /// <summary>Whether anything was changed on either side.</summary>
    public bool DidWork { get; private set; }

    /// <summary>Whether something failed only because it changed meanwhile.</summary>
    public bool MetChanges { get; private set; }

    public IReadOnlyDictionary<string, Exception> Failures => _failures;

    public IReadOnlyList<(string From, string To, bool IsExchange)> Moves => _moves;

    /// <summary>Runs one step for an item; false if it failed.</summary>
    public bool Attempt(string path, Action step)
    {
        try
        {
            step();
            return true;
        }
        catch (Exception e) when (ChangeReport.IsFailure(e))
        {
            Fail(path, e);
            return false;
        }
    }

    public void Fail(string path, Exception reason)
    {
        _failures.TryAdd(path, reason);
        MetChanges |= reason is ChangedException;
    }

    public void Worked() => DidWork = true;

    public void Moved(string from, string to, bool isExchange)
    {
        DidWork = true;
        _moves.Add((from, to, isExchange));
    }

    /// <summary>Excludes an item, with everything in it, from this pass.</summary>
    public void Block(string path) => _blocked.Add(path);

    public bool IsBlocked(SnapshotNode node) => _blocked.Count > 0 && _blocked.Contains(node.Path);

    /// <summary>The current path of an item that was at a path before the moves.</summary>
    public string PlaceOf(string path)
    {
        foreach (var (from, to, isExchange) in _moves)
        {
            if (IsWithin(path, from))
                path = to + path[from.Length..];
            else if (isExchange && IsWithin(path, to))
                path = from + path[to.Length..];
        }
        return path;
    }

    private static bool IsWithin(string path, string folder) =>
        RelativePath.Comparer.Equals(path, folder) || RelativePath.IsInside(path, folder);
}
