using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Deletes trees of any depth. The contents of a folder are first moved up to the folder that is emptied, so that paths stay
/// short, nothing recurses and no link is followed.
/// </summary>
internal static unsafe class UnixTree
{
    private const int OwnerRights = 0x1c0;

    private static readonly int FolderToList = Libc.OpenFolder | Libc.OpenNoFollow | Libc.OpenCloseOnExec;

    /// <summary>Deletes everything in a folder; false if something could not be deleted.</summary>
    public static bool Empty(SafeFileHandle top, string path)
    {
        // Each round moves the tree up by one level.
        while (true)
        {
            var isEmpty = true;
            var done = 0;
            using (var list = new UnixFolderList(top, path))
            {
                while (list.MoveNext())
                {
                    if (Remove(top, list, path, ref done))
                        ++done;
                    else
                        isEmpty = false;
                }
            }
            if (isEmpty && done == 0)
                return true;
            if (done == 0)
                return false;
        }
    }

    // Deletes a file, or moves up what is in a folder and deletes that.
    private static bool Remove(SafeFileHandle top, UnixFolderList list, string path, ref int done)
    {
        if (Libc.Remove(top, list.RawName, 0) == 0 || Libc.LastError == UnixError.NoEntry)
            return true;
        if (!list.TryExamine(out var entry) || !entry.IsFolder)
            return false;
        using (var folder = OpenToRemove(top, list.RawName))
        {
            if (folder is not null)
                MoveContentsUp(folder, top, path, ref done);
        }
        return Libc.Remove(top, list.RawName, Libc.RemoveFolder) == 0;
    }

    private static void MoveContentsUp(SafeFileHandle folder, SafeFileHandle top, string path, ref int done)
    {
        using var list = new UnixFolderList(folder, path);
        while (list.MoveNext())
        {
            if (Libc.Remove(folder, list.RawName, 0) == 0 || MoveUp(folder, list.RawName, top))
                ++done;
        }
    }

    private static bool MoveUp(SafeFileHandle folder, byte* name, SafeFileHandle top)
    {
        // Only someone who may write to a folder can move it.
        OpenToRemove(folder, name)?.Dispose();
        fixed (byte* newName = Encoding.ASCII.GetBytes(Guid.NewGuid().ToString("N") + '\0'))
            return Libc.Rename(folder, name, top, newName, 0) == 0;
    }

    // Write protection is meant for items in use, not for items that the user asked to delete.
    private static SafeFileHandle? OpenToRemove(SafeFileHandle parent, byte* name)
    {
        using var folder = Open(parent, name, Libc.OpenPath);
        if (folder is null || Libc.Status(folder, "", Libc.EmptyPath, UnixStatus.BasicAndBirth, out var status) != 0)
            return null;
        var mode = status.ToEntry().Mode;
        if ((mode & OwnerRights) != OwnerRights)
            Libc.SetMode($"/proc/self/fd/{folder.DangerousGetHandle()}", (uint)(mode | OwnerRights));
        fixed (byte* self = "."u8)
            return Open(folder, self, Libc.OpenReadOnly);
    }

    private static SafeFileHandle? Open(SafeFileHandle parent, byte* name, int access)
    {
        var descriptor = Libc.Open(parent, name, FolderToList | access, 0);
        return descriptor < 0 ? null : new SafeFileHandle(descriptor, ownsHandle: true);
    }
}
