namespace Quorvex.Tessaport.API.Local;

/// <summary>The folder with all files of the service, and their paths in it.</summary>
internal sealed class HomeFolder
{
    private const string Variable = "TESSAPORT_HOME";
    private const string ProposalVariable = "TESSAPORT_PROPOSED_DRIVES";

    private HomeFolder(string path) => Root = path;

    public string Root { get; }
    public string ServiceFile => Path.Combine(Root, "service.json");
    public string ServiceLockFile => Path.Combine(Root, "service.lock");
    public string DrivesFile => Path.Combine(Root, "drives.json");

    /// <summary>
    /// A file that would replace the one with the drives: a program has requests answered from it to learn whether the service
    /// accepts it. Null outside such a check.
    /// </summary>
    public string? ProposedDrivesFile { get; } = Environment.GetEnvironmentVariable(ProposalVariable) is { Length: > 0 } file ? file : null;

    public string LockFile => Path.Combine(Root, "lock");
    public string ClipboardFile => Path.Combine(Root, "clipboard.txt");
    public string StateFolder => Path.Combine(Root, "state");

    public string StateFileOf(Guid drive) => Path.Combine(StateFolder, drive.ToString("D") + ".records");

    /// <summary>Where earlier versions of the service kept the same.</summary>
    public string EarlierStateFileOf(Guid drive) => Path.Combine(StateFolder, drive.ToString("D") + ".json");

    /// <summary>Where the service's own files are, with links followed and without.</summary>
    public IEnumerable<string> OwnPaths()
    {
        var root = RealPath.Of(Root);
        foreach (var path in new[] { ServiceFile, ServiceLockFile, DrivesFile, LockFile, ClipboardFile, StateFolder })
        {
            yield return Path.Combine(root, Path.GetFileName(path));
            yield return RealPath.Of(path);
        }
    }

    public static HomeFolder Locate()
    {
        var chosen = Environment.GetEnvironmentVariable(Variable);
        if (!string.IsNullOrEmpty(chosen))
            return new HomeFolder(Path.GetFullPath(chosen));
        var data = Environment.GetFolderPath(
            Environment.SpecialFolder.LocalApplicationData, Environment.SpecialFolderOption.DoNotVerify);
        if (data.Length == 0)
            throw new TessaportNotInstalledException(
                $"Tessaport is not installed: there is no per-user data folder to look in. Set {Variable} to the folder of its home.");
        return new HomeFolder(Path.Combine(data, "Tessaport"));
    }
}
