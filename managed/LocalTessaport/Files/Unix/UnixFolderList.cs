using System.Text;
using System.Text.Unicode;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Enumerates the names in a folder, which need not be valid UTF-8.</summary>
internal sealed unsafe class UnixFolderList : IDisposable
{
    private readonly SafeFileHandle _folder;
    private readonly string _path;
    private readonly nint _list;
    private FolderItem* _item;

    public UnixFolderList(SafeFileHandle folder, string path)
    {
        _folder = folder;
        _path = path;
        var descriptor = Libc.Open(folder, ".", Libc.OpenReadOnly | Libc.OpenFolder | Libc.OpenCloseOnExec, 0);
        if (descriptor < 0)
            throw UnixFailure.Last(path, "listed");
        _list = Libc.OpenList(descriptor);
        if (_list != 0)
            return;
        var failure = UnixFailure.Last(path, "listed");
        Libc.Close(descriptor);
        throw failure;
    }

    /// <summary>The current name as the file system stores it, zero-terminated.</summary>
    public byte* RawName => (byte*)_item + FolderItem.NameOffset;

    /// <summary>The current name; null if it is not valid UTF-8.</summary>
    public string? Name
    {
        get
        {
            var bytes = MemoryMarshal.CreateReadOnlySpanFromNullTerminated(RawName);
            return Utf8.IsValid(bytes) ? Encoding.UTF8.GetString(bytes) : null;
        }
    }

    public bool MoveNext()
    {
        do
        {
            _item = Libc.ReadList(_list);
            if (_item == null)
                return Libc.LastError == UnixError.None ? false : throw UnixFailure.Last(_path, "listed");
        }
        while (IsSpecial(MemoryMarshal.CreateReadOnlySpanFromNullTerminated(RawName)));
        return true;
    }

    /// <summary>The entry with the current name; null if it no longer exists.</summary>
    public FileEntry? FindCurrent()
    {
        if (Libc.Status(_folder, RawName, Libc.StatusNoFollow, UnixStatus.BasicAndBirth, out var status) == 0)
            return status.ToEntry();
        return UnixFailure.MeansAbsent(Libc.LastError) ? null : throw UnixFailure.Last(_path + "/" + Name, "examined");
    }

    public void Dispose() => Libc.CloseList(_list);

    private static bool IsSpecial(ReadOnlySpan<byte> name) => name.SequenceEqual("."u8) || name.SequenceEqual(".."u8);
}
