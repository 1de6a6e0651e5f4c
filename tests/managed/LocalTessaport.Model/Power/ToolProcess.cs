using System.Diagnostics;
using System.Globalization;

namespace Quorvex.Tessaport.API.Model;

/// <summary>Runs the command line tool with a preloaded library that records its changes, or kills it at one of them.</summary>
internal static class ToolProcess
{
    private const int Killed = 128 + 9;

    /// <summary>Runs a command and returns what it changed in a folder.</summary>
    public static List<RecordedChange> Record(string home, IEnumerable<string> arguments, IReadOnlySet<int> success, string log)
    {
        File.Delete(log);
        var (code, output) = Run(home, arguments, "VELMORA_RECORDED_CHANGES", log);
        return success.Contains(code) ? RecordedChange.ReadAll(log) : throw new BrokenPromiseException($"The command ends with {code}: {output}");
    }

    /// <summary>Kills a command at a change; false if it ended before.</summary>
    public static bool Kill(string home, IEnumerable<string> arguments, IReadOnlySet<int> success, int change)
    {
        var (code, output) = Run(home, arguments, "VELMORA_DIES_AT_CHANGE", change.ToString(CultureInfo.InvariantCulture));
        return code == Killed || (success.Contains(code) ? false : throw new BrokenPromiseException($"The command ends with {code}: {output}"));
    }

    public static void Require(string home, IEnumerable<string> arguments, IReadOnlySet<int> success)
    {
        var (code, output) = Run(home, arguments, "VELMORA_DIES_AT_CHANGE", "0");
        if (!success.Contains(code))
            throw new BrokenPromiseException($"The repeated command ends with {code}: {output}");
    }

    private static (int Code, string Output) Run(string home, IEnumerable<string> arguments, string variable, string value)
    {
        var start = new ProcessStartInfo(Named("VELMORA_TESSAPORT_TOOL"), arguments) { RedirectStandardOutput = true, RedirectStandardError = true };
        start.Environment["TESSAPORT_HOME"] = home;
        start.Environment["LD_PRELOAD"] = Named("VELMORA_RECORDED_CHANGES_LIBRARY");
        start.Environment["VELMORA_CHANGED_FOLDER"] = home;
        start.Environment[variable] = value;
        using var process = Process.Start(start)!;
        var errors = process.StandardError.ReadToEndAsync();
        var output = process.StandardOutput.ReadToEnd();
        process.WaitForExit();
        return (process.ExitCode, output + errors.Result);
    }

    private static string Named(string variable) => Environment.GetEnvironmentVariable(variable)
        ?? throw new BrokenPromiseException($"{variable} is not set; it names the file to be used.");
}
