namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Another program changed a file while the service worked on it. Nothing was lost; the next attempt sees the change.
/// </summary>
internal sealed class ChangedException : IOException
{
    public ChangedException(string path)
        : base($"'{path}' changed in the meantime. Try again.")
    {
    }

    private ChangedException(string message, bool isMessage)
        : base(message)
    {
    }

    public static ChangedException KeepsChanging(string path) =>
        new($"'{path}' keeps changing while it is read. Try again when the program that writes it is finished.", isMessage: true);

    public static ChangedException InUse(string path) =>
        new($"'{path}' is open for writing in another program. Close it there and try again.", isMessage: true);
}
