namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Names of items and commands, as negative numbers: an object with a name is as large as one with a number. A name has
/// the same number as long as the process runs.
/// </summary>
internal static class Names
{
    private static readonly Dictionary<string, int> Numbers = new();
    private static readonly List<string> All = new();

    public static int NumberOf(string name)
    {
        lock (All)
        {
            if (!Numbers.TryGetValue(name, out int number))
            {
                All.Add(name);
                number = -All.Count;
                Numbers.Add(name, number);
            }
            return number;
        }
    }

    /// <summary>The name behind a negative number, and every other number as it is.</summary>
    public static object NameOrNumber(int number)
    {
        if (number >= 0)
            return number;
        lock (All)
            return All[-number - 1];
    }
}
