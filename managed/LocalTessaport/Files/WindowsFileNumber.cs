using System;
using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The number that NTFS gives a file; it counts how often the number was used, so it needs no moment beside it.</summary>
internal static partial class WindowsFileNumber
{
    private const uint ReadAttributes = 0x80;
    private const uint ShareAll = 7;
    private const uint OpenExisting = 3;
    private const uint BackupSemantics = 0x02000000;
    private static readonly IntPtr Invalid = new(-1);

    public static FileIdentity Read(string path)
    {
        var handle = Open(PathForm.ToLiteral(path), ReadAttributes, ShareAll, IntPtr.Zero, OpenExisting, BackupSemantics, IntPtr.Zero);
        if (handle == Invalid)
            return FileIdentity.None;
        try
        {
            return Inform(handle, out var found)
                ? new FileIdentity(((ulong)found.NumberHigh << 32) | found.NumberLow, 0)
                : FileIdentity.None;
        }
        finally
        {
            Close(handle);
        }
    }

    [LibraryImport("kernel32", EntryPoint = "CreateFileW", SetLastError = true, StringMarshalling = StringMarshalling.Utf16)]
    private static partial IntPtr Open(
        string path, uint access, uint share, IntPtr security, uint creation, uint flags, IntPtr template);

    [LibraryImport("kernel32", EntryPoint = "GetFileInformationByHandle")]
    [return: MarshalAs(UnmanagedType.Bool)]
    private static partial bool Inform(IntPtr handle, out Information information);

    [LibraryImport("kernel32", EntryPoint = "CloseHandle")]
    [return: MarshalAs(UnmanagedType.Bool)]
    private static partial bool Close(IntPtr handle);

    [StructLayout(LayoutKind.Explicit, Size = 52)]
    private struct Information
    {
        [FieldOffset(44)] public uint NumberHigh;
        [FieldOffset(48)] public uint NumberLow;
    }
}
