namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Gives back the memory of a large piece of work before the next one begins. Left to itself, the runtime keeps what is no longer
/// used while its heap grows: a first sync of a hundred thousand files then takes 45 MB more.
/// </summary>
internal static class LargeGarbage
{
    /// <summary>For fewer items the collection takes longer than it is worth.</summary>
    public const int ManyItems = 20_000;

    /// <param name="items">How many items the work that is finished was about.</param>
    public static void ReleaseAfter(int items)
    {
        if (items >= ManyItems)
            GC.Collect(GC.MaxGeneration, GCCollectionMode.Aggressive, blocking: true, compacting: true);
    }
}
