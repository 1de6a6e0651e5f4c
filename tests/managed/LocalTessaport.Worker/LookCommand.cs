/// <summary>Requests items and prints how many there are, or what went wrong.</summary>
internal static class LookCommand
{
    private const int Failed = 3;

    public static int Run(Func<IEnumerable<Item>> ask)
    {
        try
        {
            Console.WriteLine(ask().Count());
            return 0;
        }
        catch (Exception e)
        {
            Console.WriteLine(e.Message);
            return Failed;
        }
    }
}
