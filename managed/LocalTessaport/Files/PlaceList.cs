using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Where that belongs which came into a staging folder and was not checked yet: a file in the folder, written before it comes. A power
/// failure can take its content.
/// </summary>
/// <remarks>One file serves for all: creating and deleting one for each replaced file takes longer than replacing that.</remarks>
internal sealed class PlaceList : IDisposable
{
    private const string Suffix = ".places";
    private const char End = '\0';
    private const int MostBytes = 16 << 20;

    private readonly object _lock = new();
    private readonly OpenFolder _staging;
    private readonly string _name = Staging.NewName() + Suffix;
    private SafeFileHandle? _file;
    private long _length;
    private int _unchecked;

    public PlaceList(OpenFolder staging) => _staging = staging;

    /// <summary>Writes where what comes under a name belongs.</summary>
    public void Add(UncheckedName staged, string place)
    {
        var entry = Encoding.UTF8.GetBytes(staged.Text + End + place + End);
        lock (_lock)
        {
            _file ??= _staging.CreateFile(_name);
            FileHandle.Write(_file, entry, _length, Path.Join(_staging.Path, _name));
            _length += entry.Length;
            ++_unchecked;
        }
    }

    /// <summary>Says that what came under a name was checked.</summary>
    public void Settle()
    {
        lock (_lock)
        {
            if (--_unchecked == 0)
                _length = 0;
        }
    }

    public void Dispose() => _file?.Dispose();

    /// <summary>The places in all such files of a folder, by the name in the folder. Entries that are not complete are left out.</summary>
    public static Dictionary<UncheckedName, string> ReadAll(OpenFolder staging)
    {
        var places = new Dictionary<UncheckedName, string>();
        foreach (var (name, entry) in staging.Read())
        {
            if (!entry.IsFolder && name.EndsWith(Suffix, StringComparison.Ordinal))
                Read(staging, name, places);
        }
        return places;
    }

    private static void Read(OpenFolder staging, string name, Dictionary<UncheckedName, string> places)
    {
        using var file = staging.OpenFile(name);
        var bytes = new byte[Math.Min(file.Entry.Size, MostBytes)];
        var words = Encoding.UTF8.GetString(bytes, 0, file.Read(bytes, file.Entry.Size - bytes.Length)).Split(End);
        // Nothing is known to follow the last end.
        for (var i = 0; i + 2 < words.Length; ++i)
        {
            if (UncheckedName.TryParse(words[i]) is { } staged && RelativePath.TryParse(words[i + 1]) is { Length: > 0 } place)
                places[staged] = place;
        }
    }
}
