using System.ComponentModel;
using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Model;

/// <summary>What .NET does not offer.</summary>
internal static partial class NativeCalls
{
    private const int CurrentFolder = -100;
    private const uint Exchange = 2;
    private const int NoFollow = 0x100;
    private const uint BasicProperties = 0x7ff;
    private const int SizeOfStatus = 256;
    private const int PlaceOfNumber = 32;

    public static void HardLink(string file, string link)
    {
        if (OperatingSystem.IsWindows() ? !CreateHardLink(link, file, IntPtr.Zero) : Link(file, link) != 0)
            throw new IOException($"'{link}' cannot be made: {new Win32Exception(Marshal.GetLastPInvokeError()).Message}.");
    }

    /// <summary>Lets two files change places in one step, so that nothing is overwritten unseen.</summary>
    public static bool TryExchange(string one, string other) =>
        Rename(CurrentFolder, one, CurrentFolder, other, Exchange) == 0;

    /// <summary>The number of a file in its file system.</summary>
    public static ulong NumberOf(string path)
    {
        var status = new byte[SizeOfStatus];
        return Status(CurrentFolder, path, NoFollow, BasicProperties, status) == 0
            ? BitConverter.ToUInt64(status, PlaceOfNumber)
            : throw new IOException($"'{path}' cannot be examined: {new Win32Exception(Marshal.GetLastPInvokeError()).Message}.");
    }

    [LibraryImport("libc", EntryPoint = "statx", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    private static partial int Status(int folder, string path, int flags, uint wanted, [Out] byte[] status);

    [LibraryImport("libc", EntryPoint = "link", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    private static partial int Link(string file, string link);

    [LibraryImport("libc", EntryPoint = "renameat2", SetLastError = true, StringMarshalling = StringMarshalling.Utf8)]
    private static partial int Rename(int folder, string from, int otherFolder, string to, uint flags);

    [LibraryImport("kernel32", EntryPoint = "CreateHardLinkW", SetLastError = true, StringMarshalling = StringMarshalling.Utf16)]
    [return: MarshalAs(UnmanagedType.Bool)]
    private static partial bool CreateHardLink(string link, string file, IntPtr security);
}
