namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Gives back the memory of a large piece of work before the next one begins. Left to itself, the runtime keeps what is no longer
/// used while its heap grows: a first sync of a hundred thousand files then takes 45 MB more.
/// </summary>
internal static class LargeGarbage
{
    // For fewer items the collection takes longer than it is worth.
    private const int ManyItems = 20_000;

    /// <summary>Whether work on so many items leaves enough to be given back.</summary>
    public static bool IsLeftBy(int items) => items >= ManyItems;

    /// <summary>Gives back what work on so many items left, if that is enough to be worth it.</summary>
    public static void ReleaseAfter(int items)
    {
        if (IsLeftBy(items))
            GC.Collect(GC.MaxGeneration, GCCollectionMode.Aggressive, blocking: true, compacting: true);
    }

    /// <summary>Gives it back from time to time, when one item after the other becomes garbage.</summary>
    /// <param name="items">How many items there were up to now.</param>
    public static void ReleaseDuring(int items)
    {
        if (items % ManyItems == 0)
            ReleaseAfter(ManyItems);
    }
}
