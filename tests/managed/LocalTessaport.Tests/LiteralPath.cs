namespace Quorvex.Tessaport.API.Tests;

/// <summary>Paths that the system takes literally, with names that it otherwise reserves for devices or shortens.</summary>
internal static class LiteralPath
{
    public static string Of(string path) =>
        OperatingSystem.IsWindows() ? @"\\?\" + path.Replace('/', Path.DirectorySeparatorChar) : path;
}
