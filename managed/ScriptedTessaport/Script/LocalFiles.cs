namespace Quorvex.Tessaport.API.Scripted;

/// <summary>The contents of local files during a call; null for a file that cannot be read.</summary>
internal static class LocalFiles
{
    public static object ContentsOf(List<string> paths) => paths.Select(ContentOf).ToList();

    private static string? ContentOf(string path)
    {
        try
        {
            return File.ReadAllText(path.Replace('\\', Path.DirectorySeparatorChar));
        }
        catch (System.Exception e) when (e is IOException or System.UnauthorizedAccessException or System.ArgumentException)
        {
            return null;
        }
    }
}
