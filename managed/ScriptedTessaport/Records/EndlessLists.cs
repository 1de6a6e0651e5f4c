namespace Quorvex.Tessaport.API.Scripted;

/// <summary>Lists that go on until the script is reset.</summary>
internal static class EndlessLists
{
    private static int _resets;

    public static void End() => Interlocked.Increment(ref _resets);

    /// <summary>A record for each millisecond, so that the memory of a test lasts.</summary>
    public static IEnumerable<T> Of<T>(Func<int, T> generate)
    {
        int resets = Volatile.Read(ref _resets);
        for (int number = 0; resets == Volatile.Read(ref _resets); ++number)
        {
            yield return generate(number);
            Thread.Sleep(1);
        }
    }
}
