namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// A read lease: the kernel grants it only while no program has the file open for writing. A program that then opens the file
/// for writing waits until the lease is released, or for some seconds.
/// </summary>
internal sealed class UnixWriteGuard : WriteGuard
{
    private readonly SafeFileHandle? _leased;

    private UnixWriteGuard(SafeFileHandle? leased) => _leased = leased;

    public override bool Holds => _leased is null || Libc.Control(_leased, Libc.GetLease, 0) == Libc.ReadLease;

    public static UnixWriteGuard Take(UnixFolder folder, string name, string path, FileEntry expected)
    {
        OpenedFile? file = null;
        try
        {
            file = TryOpen(folder, name);
            var isLeased = file is not null && Lease(file.Handle, path);
            Step.Reached("Guard.Taken", path);
            if (folder.Find(name) is not { } found || !found.IsUnchangedSince(expected))
                throw new ChangedException(path);
            if (isLeased)
                return new UnixWriteGuard(file!.Handle);
        }
        catch
        {
            file?.Dispose();
            throw;
        }
        file?.Dispose();
        return new UnixWriteGuard(null);
    }

    public override void Dispose()
    {
        if (_leased is null)
            return;
        Libc.Control(_leased, Libc.SetLease, Libc.NoLease);
        _leased.Dispose();
    }

    // A file that its owner may not read can be replaced all the same.
    private static OpenedFile? TryOpen(UnixFolder folder, string name)
    {
        try
        {
            return folder.OpenFile(name);
        }
        catch (UnauthorizedAccessException)
        {
            return null;
        }
    }

    // The signal that reports a broken lease would end the process by default; this one is ignored by default. Not every file
    // system has leases, and only the owner of a file gets one.
    private static bool Lease(SafeFileHandle handle, string path)
    {
        if ((UnixPath.Missing & UnixFeatures.Leases) != 0 || Libc.Control(handle, Libc.SetSignal, Libc.UrgentSignal) != 0)
            return false;
        if (Libc.Control(handle, Libc.SetLease, Libc.ReadLease) == 0)
            return true;
        return Libc.LastError == UnixError.TryAgain ? throw ChangedException.InUse(path) : false;
    }
}
