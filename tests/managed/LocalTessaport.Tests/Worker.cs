namespace Quorvex.Tessaport.API.Tests;

/// <summary>The program that works on a home as a process of its own.</summary>
internal static class Worker
{
    public static string Executable { get; } =
        Path.Combine(AppContext.BaseDirectory, OperatingSystem.IsWindows() ? "LocalTessaport.Worker.exe" : "LocalTessaport.Worker");
}
