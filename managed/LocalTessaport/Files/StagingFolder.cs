namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// A folder in the staging folder of a side, for one of several threads that prepare files. In one folder, creating files and
/// renaming them wait for each other.
/// </summary>
internal sealed class StagingFolder : IDisposable
{
    private readonly FolderLease _staging;
    private readonly string _name = Staging.NewName() + Staging.FolderSuffix;
    private readonly OpenFolder _folder;

    public StagingFolder(DriveSide side)
    {
        _staging = side.OpenStaging();
        try
        {
            _folder = Staging.OpenIn(_staging.Folder, _name);
        }
        catch
        {
            _staging.Dispose();
            throw;
        }
    }

    /// <summary>The folder, to be used while this object is.</summary>
    public FolderLease Open() => new(_folder, isOwned: false);

    /// <summary>Removes the folder. It stays for the next request if it holds something that could not be put back.</summary>
    public void Dispose()
    {
        _folder.Dispose();
        try
        {
            _staging.Folder.RemoveFolder(_name);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
        }
        _staging.Dispose();
    }
}
