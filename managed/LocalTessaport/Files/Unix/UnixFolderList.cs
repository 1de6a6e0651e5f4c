using System.Buffers;
using System.Text.Unicode;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Enumerates the names in a folder, which need not be valid UTF-8.</summary>
internal sealed unsafe class UnixFolderList : IDisposable
{
    /// <summary>The number of bytes that names can have, and so of characters at most.</summary>
    public const int LongestName = 255;

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

    /// <summary>The current name; false if it is not valid UTF-8.</summary>
    /// <param name="buffer">Holds the name.</param>
    /// <param name="name">The name.</param>
    public bool TryReadName(Span<char> buffer, out ReadOnlySpan<char> name)
    {
        var bytes = MemoryMarshal.CreateReadOnlySpanFromNullTerminated(RawName);
        if (bytes.Length > buffer.Length)
            buffer = new char[bytes.Length];
        var status = Utf8.ToUtf16(bytes, buffer, out _, out var length, replaceInvalidSequences: false);
        name = buffer[..length];
        return status == OperationStatus.Done;
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

    /// <summary>Looks at what has the current name; false if it no longer exists.</summary>
    public bool TryExamine(out FileEntry entry)
    {
        if (Libc.Status(_folder, RawName, Libc.StatusNoFollow, UnixStatus.BasicAndBirth, out var status) == 0)
        {
            entry = status.ToEntry();
            return true;
        }
        var error = Libc.LastError;
        if (!UnixFailure.MeansAbsent(error))
            throw UnixFailure.For(error, _path + "/" + Marshal.PtrToStringUTF8((nint)RawName), "examined");
        entry = default;
        return false;
    }

    public void Dispose() => Libc.CloseList(_list);

    private static bool IsSpecial(ReadOnlySpan<byte> name) => name.SequenceEqual("."u8) || name.SequenceEqual(".."u8);
}
