using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Opens files and folders below an open folder by paths of any length, without following a link.</summary>
internal static class UnixPath
{
    // Below the kernel's limit of 4,096 bytes.
    private const int LongestPiece = 4000;

    /// <summary>The features that a test pretends to be missing.</summary>
    internal static UnixFeatures Missing { get; set; }

    private static readonly Lazy<bool> CanRestrict = new(HasRestrictedOpening);

    /// <summary>
    /// Returns null and the error if the item cannot be opened. A link in the path is TooManyLinks or NotAFolder.
    /// </summary>
    public static SafeFileHandle? TryOpen(SafeHandle folder, string path, int flags, out UnixError error)
    {
        var restricts = CanRestrict.Value && (Missing & UnixFeatures.RestrictedOpening) == 0;
        SafeFileHandle? passed = null;
        for (var start = 0; ;)
        {
            var end = EndOfPiece(path, start, restricts);
            var isLast = end == path.Length;
            var opened = OpenPiece(passed ?? folder, path[start..end], isLast ? flags : Libc.OpenPath | Libc.OpenFolder, restricts, out error);
            passed?.Dispose();
            if (isLast || opened is null)
                return opened;
            passed = opened;
            start = end + 1;
        }
    }

    /// <summary>Opens a folder by its full path, which must not contain a link.</summary>
    public static SafeFileHandle? TryOpenRoot(string path, out UnixError error)
    {
        var flags = Libc.OpenPath | Libc.OpenFolder;
        var descriptor = Libc.Open("/", flags | Libc.OpenCloseOnExec, 0);
        error = descriptor < 0 ? Libc.LastError : UnixError.None;
        if (descriptor < 0)
            return null;
        using var top = new SafeFileHandle(descriptor, ownsHandle: true);
        return TryOpen(top, path.Length > 1 ? path[1..] : ".", flags, out error);
    }

    private static SafeFileHandle? OpenPiece(SafeHandle folder, string piece, int flags, bool restricts, out UnixError error)
    {
        flags |= Libc.OpenCloseOnExec | Libc.OpenNoFollow;
        var how = new OpenHow { Flags = (ulong)flags, Resolve = OpenHow.Beneath | OpenHow.NoLinks | OpenHow.NoMagicLinks };
        int descriptor;
        do
        {
            descriptor = restricts ? Libc.OpenRestricted(folder, piece, how) : Libc.Open(folder, piece, flags, 0);
            error = descriptor < 0 ? Libc.LastError : UnixError.None;
        }
        while (error == UnixError.Interrupted);
        return descriptor < 0 ? null : new SafeFileHandle(descriptor, ownsHandle: true);
    }

    private static int EndOfPiece(string path, int start, bool restricts)
    {
        if (restricts && Encoding.UTF8.GetByteCount(path.AsSpan(start)) <= LongestPiece)
            return path.Length;
        // No character takes more than three bytes for each of its units.
        var end = restricts ? path.LastIndexOf('/', start + LongestPiece / 3) : -1;
        if (end <= start)
            end = path.IndexOf('/', start);
        return end < 0 ? path.Length : end;
    }

    // Kernels before 5.6 do not have the call, and some sandboxes forbid calls that they do not know.
    private static bool HasRestrictedOpening()
    {
        using var current = new SafeFileHandle(Libc.CurrentFolder, ownsHandle: false);
        var how = new OpenHow { Flags = (ulong)(Libc.OpenPath | Libc.OpenFolder | Libc.OpenCloseOnExec) };
        var descriptor = Libc.OpenRestricted(current, "/", how);
        if (descriptor < 0)
            return Libc.LastError is not (UnixError.NotImplemented or UnixError.NotPermitted);
        Libc.Close(descriptor);
        return true;
    }
}
