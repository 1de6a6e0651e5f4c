namespace Quorvex.Tessaport.API.Model;

/// <summary>The versions that must exist somewhere: written by a user, and not overwritten or removed by one.</summary>
internal sealed class Ledger
{
    private readonly HashSet<int> _owed = [];
    private int _last;

    public int Written => _last;

    public int Next() => ++_last;

    public void Write(int version) => _owed.Add(version);

    /// <summary>A user overwrote or removed a file that held the version.</summary>
    public void GiveUp(int version) => _owed.Remove(version);

    public void GiveUp(IEnumerable<int> versions) => _owed.ExceptWith(versions);

    public List<int> Missing(HashSet<int> present) => _owed.Where(version => !present.Contains(version)).Order().ToList();

    public List<int> OwedAmong(IEnumerable<int> versions) => versions.Where(_owed.Contains).Distinct().ToList();
}
