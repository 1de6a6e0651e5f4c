using System.ComponentModel;
using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>A second name of a file.</summary>
internal static partial class HardLink
{
    public static void Make(string file, string link)
    {
        if (OperatingSystem.IsWindows())
        {
            if (!Create(link, file, IntPtr.Zero))
                throw new Win32Exception();
            return;
        }
        using var program = Process.Start("ln", [file, link]);
        program.WaitForExit();
        if (program.ExitCode != 0)
            throw new InvalidOperationException($"'ln' ended with {program.ExitCode}.");
    }

    [LibraryImport("kernel32", EntryPoint = "CreateHardLinkW", SetLastError = true, StringMarshalling = StringMarshalling.Utf16)]
    [return: MarshalAs(UnmanagedType.Bool)]
    private static partial bool Create(string link, string file, IntPtr security);
}
