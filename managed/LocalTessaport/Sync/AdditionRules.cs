namespace Quorvex.Tessaport.API.Local;

/// <summary>Decides which files can be added to a folder, both for the question and for the addition.</summary>
internal sealed class AdditionRules
{
    private readonly LocalDrive _drive;
    private readonly string _folder;
    private readonly HashSet<string> _names = new(RelativePath.Comparer);

    public AdditionRules(DrivePlace folder)
    {
        _drive = folder.Drive;
        _folder = folder.Path;
    }

    /// <summary>The folder to which files are added.</summary>
    public string Folder => _folder;

    /// <summary>Throws if no file can be added.</summary>
    public void RequireOpenFolder()
    {
        FolderListing.RequireFolder(ItemView.At(_drive, _folder));
        _drive.RequireWritable();
    }

    /// <summary>The full path of a source and its target; throws if it cannot be added.</summary>
    public (string Source, ItemView Target) RequireSource(string? path)
    {
        var source = PathForm.TryNormalise(path) ?? throw new ArgumentException($"'{path}' is not a full path of a file.");
        if (FileProbe.FindFollowingLinks(source) is not { IsFolder: false })
            throw new FileNotFoundException($"'{source}' does not exist or is not a file.");
        FileSource.Outside(source).Open().Dispose();
        return (source, RequireTarget(Path.GetFileName(source)));
    }

    /// <summary>The item that shows why a source could not be added: its target if that exists, else the folder.</summary>
    public DrivePlace ShownAt(string? source)
    {
        var name = source is null ? "" : source[(source.LastIndexOfAny(['/', '\\']) + 1)..];
        var target = RelativePath.TryParse(name) is { Length: > 0 } ? RelativePath.Join(_folder, name) : _folder;
        return new DrivePlace(_drive, ItemView.At(_drive, target).Exists ? target : _folder);
    }

    private ItemView RequireTarget(string name)
    {
        if (!NameRules.CanBeAdded(name))
            throw new IOException($"'{name}' is not a name that every platform accepts.");
        if (!_names.Add(name))
            throw new IOException($"Two of the files are named '{name}'; add them to different folders.");
        var target = ItemView.At(_drive, RelativePath.Join(_folder, name));
        if (target.Workspace is { IsFolder: true } || target.Server is { IsFolder: true })
            throw new IOException($"There is a folder named '{name}' already.");
        LeftOut.RequireNot(target);
        return target;
    }
}
