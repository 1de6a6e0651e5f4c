namespace Quorvex.Tessaport.API.Local;

/// <summary>Sees what is in a folder while the folder is read, before anything is made for it.</summary>
internal interface IEntryFilter
{
    /// <summary>Whether an entry is left out of the list. The name is valid only during the call.</summary>
    bool LeavesOut(ReadOnlySpan<char> name, in FileEntry entry);
}
