using System.Diagnostics;

/// <summary>Saves a file as a user would at one step of the service, and kills the process at another.</summary>
internal static class Accidents
{
    private const string SavedContent = "saved by the user";

    /// <summary>Does without features that some kernels and file systems lack.</summary>
    public static void LackIfAsked()
    {
        if (Environment.GetEnvironmentVariable("VELMORA_WORKER_LACKS") is { } missing)
            UnixPath.Missing = Enum.Parse<UnixFeatures>(missing);
    }

    public static void HappenIfAsked()
    {
        var savesAt = Environment.GetEnvironmentVariable("VELMORA_WORKER_SAVES_AT");
        var diesAt = Environment.GetEnvironmentVariable("VELMORA_WORKER_DIES_AT");
        if (diesAt is null)
            return;
        Step.Hook = (step, path) =>
        {
            if (step == savesAt)
                Save(path);
            if (step == diesAt)
                Die();
        };
    }

    private static void Save(string path)
    {
        File.WriteAllText(path + ".new", SavedContent);
        File.Move(path + ".new", path, overwrite: true);
    }

    private static void Die()
    {
        using var self = Process.GetCurrentProcess();
        self.Kill();
        System.Threading.Thread.Sleep(System.Threading.Timeout.Infinite);
    }
}
