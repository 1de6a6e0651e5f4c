namespace Quorvex.Tessaport.API.Tests;

/// <summary>Paths that the system takes as they are written, with names that it otherwise keeps for devices or shortens.</summary>
internal static class LiteralPath
{
    public static string Of(string path) =>
        OperatingSystem.IsWindows() ? @"\\?\" + path.Replace('/', Path.DirectorySeparatorChar) : path;
}
