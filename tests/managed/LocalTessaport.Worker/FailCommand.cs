using System.IO;

/// <summary>Makes requests and prints how many of them failed because a user wanted it.</summary>
internal static class FailCommand
{
    public static int Run(int requests)
    {
        var service = new TessaportService();
        Console.WriteLine(Enumerable.Range(0, requests).Count(_ => Fails(service)));
        return 0;
    }

    private static bool Fails(TessaportService service)
    {
        try
        {
            service.GetVersion();
            return false;
        }
        catch (IOException e) when (e.Message == "a")
        {
            return true;
        }
    }
}
