namespace Quorvex.Tessaport.API.Local;

/// <summary>Enumerates the names in a folder.</summary>
internal static unsafe class WindowsFolderList
{
    private const int BufferSize = 64 * 1024;

    /// <summary>The entries of an open folder, or those that match a name. The handle must not have been listed before.</summary>
    public static List<NamedEntry> Read(
        SafeFileHandle folder, string path, ulong volume, string? pattern = null, IEntryFilter? filter = null)
    {
        var found = new List<NamedEntry>();
        var buffer = new byte[BufferSize];
        while (true)
        {
            var status = NativeFile.List(folder, buffer, pattern);
            if (status is WindowsStatus.NoMoreFiles or WindowsStatus.NoSuchFile)
                return found;
            if (status != WindowsStatus.Success)
                throw WindowsFailure.For(status, path, "listed");
            Collect(buffer, volume, filter, found);
        }
    }

    private static void Collect(byte[] buffer, ulong volume, IEntryFilter? filter, List<NamedEntry> found)
    {
        fixed (byte* start = buffer)
        {
            for (var at = start; ; at += ((Item*)at)->Next)
            {
                var item = (Item*)at;
                var name = new ReadOnlySpan<char>(at + Item.NameOffset, item->NameLength / 2);
                var entry = item->ToEntry(volume);
                if (name is not ("." or "..") && filter?.LeavesOut(name, entry) is not true)
                    found.Add(new(name.ToString(), entry));
                if (item->Next == 0)
                    return;
            }
        }
    }

    [StructLayout(LayoutKind.Explicit, Size = 104)]
    private struct Item
    {
        public const int NameOffset = 104;

        [FieldOffset(0)] public int Next;
        [FieldOffset(24)] public long Written;
        [FieldOffset(32)] public long Changed;
        [FieldOffset(40)] public long Size;
        [FieldOffset(56)] public uint Attributes;
        [FieldOffset(60)] public int NameLength;

        /// <summary>The tag of a link.</summary>
        [FieldOffset(64)] public uint Tag;
        [FieldOffset(96)] public ulong Number;

        public readonly FileEntry ToEntry(ulong volume) => WindowsInformation.Entry(
            Attributes, Size, Written, Changed, Number, volume, (Attributes & NativeFile.Reparse) != 0 ? Tag : 0);
    }
}
