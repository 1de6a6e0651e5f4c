using System.ComponentModel;
using System.Runtime.InteropServices;

/// <summary>Lets a test that runs as root see what any other user sees.</summary>
internal static partial class Privileges
{
    private const uint Nobody = 65534;

    public static void DropIfAsked()
    {
        if (Environment.GetEnvironmentVariable("VELMORA_WORKER_DROPS_PRIVILEGES") is null)
            return;
        if (SetGroups(0, 0) != 0 || SetGroup(Nobody, Nobody, Nobody) != 0 || SetUser(Nobody, Nobody, Nobody) != 0)
            throw new Win32Exception();
    }

    [LibraryImport("libc", EntryPoint = "setgroups", SetLastError = true)]
    private static partial int SetGroups(nint count, nint groups);

    [LibraryImport("libc", EntryPoint = "setresgid", SetLastError = true)]
    private static partial int SetGroup(uint real, uint effective, uint saved);

    [LibraryImport("libc", EntryPoint = "setresuid", SetLastError = true)]
    private static partial int SetUser(uint real, uint effective, uint saved);
}
