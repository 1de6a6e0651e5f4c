namespace Quorvex.Tessaport.API.Local;

/// <summary>A file that can be read: one on a side, or one that a user named by its full path.</summary>
internal sealed class FileSource
{
    private readonly DriveSide? _side;
    private readonly string _place;

    private FileSource(DriveSide? side, string place)
    {
        _side = side;
        _place = place;
    }

    /// <summary>The full path in the platform's form.</summary>
    public string Path => _side?.PathOf(_place) ?? _place;

    /// <summary>A file of a side; no link is followed.</summary>
    public static FileSource On(DriveSide side, string path) => new(side, path);

    /// <summary>A file anywhere; links are followed, since the user named it.</summary>
    public static FileSource Outside(string fullPath) => new(null, fullPath);

    /// <exception cref="System.IO.IOException">There is no such file, or it cannot be read now.</exception>
    public OpenedFile Open() =>
        _side is not null ? _side.OpenFile(_place)
        : OperatingSystem.IsWindows() ? WindowsFile.Open(_place)
        : UnixFile.Open(_place);
}
