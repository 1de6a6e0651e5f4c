namespace Quorvex.Tessaport.API.Local;

/// <summary>Whether the service accepts requests, according to its state file.</summary>
internal static class ServiceState
{
    /// <summary>Returns if the service is running; otherwise throws the exception for its state.</summary>
    public static void RequireRunning(HomeFolder home, string state)
    {
        if (state != "running")
            throw ExceptionFor(state, home);
    }

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
        _ => ServiceFile.Unreadable(home, $"it names the unknown state '{state}'"),
    };
}
