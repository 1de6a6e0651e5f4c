using System.Globalization;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>What tests learn from Unix programs.</summary>
internal static class UnixCalls
{
    /// <summary>The disk space that a file uses.</summary>
    public static long BytesOnDisk(string path) => 512 * long.Parse(Run("stat", "--format=%b", path), CultureInfo.InvariantCulture);

    public static UnixFileMode ModeOf(string path) =>
        OperatingSystem.IsWindows() ? throw new PlatformNotSupportedException() : File.GetUnixFileMode(path);

    public static void SetMode(string path, UnixFileMode mode)
    {
        if (OperatingSystem.IsWindows())
            throw new PlatformNotSupportedException();
        File.SetUnixFileMode(path, mode);
    }

    public static string Run(string program, params string[] arguments)
    {
        using var process = Process.Start(new ProcessStartInfo(program, arguments) { RedirectStandardOutput = true })!;
        var output = process.StandardOutput.ReadToEnd();
        process.WaitForExit();
        return process.ExitCode == 0 ? output : throw new InvalidOperationException($"'{program}' ended with {process.ExitCode}.");
    }
}
