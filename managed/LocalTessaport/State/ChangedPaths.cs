namespace Quorvex.Tessaport.API.Local;

/// <summary>The paths of the records of a table that were changed.</summary>
internal sealed class ChangedPaths
{
    // A set of those of a first sync would take several times the memory.
    private readonly List<string> _paths = [];

    /// <summary>How often one was changed.</summary>
    public int Count => _paths.Count;

    public HashSet<string> Distinct() => new(_paths, RelativePath.Comparer);

    public void Add(string path) => _paths.Add(path);

    public void Clear() => _paths.Clear();
}
