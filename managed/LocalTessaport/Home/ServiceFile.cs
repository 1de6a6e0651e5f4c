namespace Quorvex.Tessaport.API.Local;

/// <summary>What the state file of a home says.</summary>
internal sealed record ServiceFile(string State, Dictionary<string, RequestFault> Faults)
{
    public static ServiceFile Read(HomeFolder home)
    {
        try
        {
            // Checked first: a FileNotFoundException can also mean an assembly that cannot be loaded.
            if (HomeFile.Find(home.ServiceFile) is null)
                throw new TessaportNotInstalledException(
                    $"Tessaport is not installed: there is no '{home.ServiceFile}'. Make a home with 'tessaport drive add' or "
                    + "'tessaport demo', or set TESSAPORT_HOME to the folder of an existing one.");
            return Parse(JsonFile.Read(home.ServiceFile));
        }
        catch (InvalidDataException e)
        {
            throw Unreadable(home, e.Message);
        }
        catch (InvalidFaultException e)
        {
            throw new InvalidDataException(
                $"The faults that are set for requests cannot be read from '{home.ServiceFile}': {e.Message}. Remove them all with "
                + "'tessaport service clear', or use the version of Tessaport that set them.");
        }
    }

    public static InvalidDataException Unreadable(HomeFolder home, string reason) => new(
        $"The state of Tessaport cannot be read from '{home.ServiceFile}': {reason}. Run 'tessaport service start' to write it anew.");

    private static ServiceFile Parse(JsonTree root) =>
        root.Find("state")?.Text is { } state
            ? new ServiceFile(state, RequestFaults.Parse(root))
            : throw new InvalidDataException("it is not of the form {\"state\": \"running\"}");
}
