using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Whether the service accepts requests now, according to its state file.</summary>
internal static class ServiceState
{
    /// <summary>Returns if the service is running; otherwise throws the exception for its state.</summary>
    public static void Require(HomeFolder home)
    {
        var state = Read(home);
        if (state != "running")
            throw ExceptionFor(state, home);
    }

    private static string Read(HomeFolder home)
    {
        // Checked first: a FileNotFoundException can also mean an assembly that cannot be loaded.
        if (FileProbe.FindFollowingLinks(home.ServiceFile) is null)
            throw new TessaportNotInstalledException(
                $"Tessaport is not installed: there is no '{home.ServiceFile}'. Make a home with 'tessaport demo', or set "
                + "TESSAPORT_HOME to the folder of an existing one.");
        try
        {
            return JsonFile.Read(home.ServiceFile, ParseState);
        }
        catch (InvalidDataException e)
        {
            throw Unreadable(home, e.Message);
        }
    }

    private static string ParseState(JsonElement root) =>
        root.ValueKind == JsonValueKind.Object
        && root.TryGetProperty("state", out var state)
        && state.ValueKind == JsonValueKind.String
            ? state.GetString()!
            : throw new InvalidDataException("it is not of the form {\"state\": \"running\"}");

    private static Exception ExceptionFor(string state, HomeFolder home) => state switch
    {
        "not-running" => new TessaportNotRunningException(
            "Tessaport is not running; start it with 'tessaport service start'."),
        "requires-update" => new TessaportRequiresUpdateException(
            "Tessaport is too old and must be updated; when that is done, run 'tessaport service set-state running'."),
        "forced-update" => new TessaportForcedUpdateException(
            "Tessaport is about to be updated and accepts no requests; when that is done, run 'tessaport service set-state running'."),
        "api-requires-update" => new TessaportApiRequiresUpdateException(
            "The programming interface of Tessaport is too old and must be updated; when that is done, run "
            + "'tessaport service set-state running'."),
        _ => Unreadable(home, $"it names the unknown state '{state}'"),
    };

    private static InvalidDataException Unreadable(HomeFolder home, string reason) => new(
        $"The state of Tessaport cannot be read from '{home.ServiceFile}': {reason}. Run 'tessaport service start' to write it anew.");
}
