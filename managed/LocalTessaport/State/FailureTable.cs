namespace Quorvex.Tessaport.API.Local;

/// <summary>The reason of the last failure for each item whose last request failed.</summary>
internal sealed class FailureTable
{
    private readonly Dictionary<string, string> _reasons;

    public FailureTable()
        : this([])
    {
    }

    private FailureTable(Dictionary<string, string> reasons) => _reasons = new(reasons, RelativePath.Comparer);

    public bool IsChanged { get; private set; }

    public IReadOnlyDictionary<string, string> Reasons => _reasons;

    public FailureTable Clone() => new(_reasons);

    public void AcceptChanges() => IsChanged = false;

    public string? At(string path) => _reasons.GetValueOrDefault(path);

    public void Put(string path, string reason)
    {
        if (At(path) == reason)
            return;
        _reasons[path] = reason;
        IsChanged = true;
    }

    public void Remove(string path) => IsChanged |= _reasons.Remove(path);

    /// <summary>Forgets an item with everything in it.</summary>
    public void RemoveWithin(string path)
    {
        foreach (var known in _reasons.Keys.Where(known => known == path || RelativePath.IsInside(known, path)).ToList())
            Remove(known);
    }
}
