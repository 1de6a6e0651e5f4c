using System.Globalization;

namespace Quorvex.Tessaport.API.Model;

/// <summary>One folder of the drive, as its user sees it.</summary>
internal sealed class Side
{
    private const string ServiceFolder = ".tessaport";

    public Side(string root) => Root = Directory.CreateDirectory(root).FullName;

    public string Root { get; }

    public string At(string path) => Path.Combine(Root, path);

    /// <summary>Each file with the number of its version.</summary>
    public SortedDictionary<string, int> Files() =>
        new(Walk().Where(entry => entry.Kind == Kind.File).ToDictionary(entry => entry.Path, entry => VersionAt(entry.Path)), StringComparer.Ordinal);

    public List<string> Folders() => PathsOf(Kind.Folder);

    public List<string> Links() => PathsOf(Kind.Link);

    /// <summary>Links with their targets, wherever they are: a folder is moved with its links.</summary>
    public List<string> LinkTargets() =>
        Links().Select(path => Path.GetFileName(path) + " -> " + new FileInfo(At(path)).LinkTarget).Order(StringComparer.Ordinal).ToList();

    /// <summary>Whether a file may have several names here.</summary>
    public bool HasHardLinks()
    {
        if (OperatingSystem.IsWindows())
            return true;
        var numbers = new HashSet<ulong>();
        return Walk().Any(entry => entry.Kind == Kind.File && !numbers.Add(NativeCalls.NumberOf(At(entry.Path))));
    }

    public Kind KindOf(string path) => Walk().FirstOrDefault(entry => entry.Path == path).Kind;

    public int VersionAt(string path)
    {
        var text = File.ReadAllText(At(path));
        return Version.TryParse(text, out var number) ? number : throw new BrokenPromiseException($"'{At(path)}' holds part of a version: '{text}'.");
    }

    public IEnumerable<(string Path, Kind Kind)> Walk()
    {
        var folders = new Queue<string>([""]);
        while (folders.TryDequeue(out var folder))
        {
            foreach (var info in new DirectoryInfo(At(folder)).EnumerateFileSystemInfos().OrderBy(info => info.Name, StringComparer.Ordinal))
            {
                var path = folder.Length == 0 ? info.Name : folder + '/' + info.Name;
                if (path == ServiceFolder)
                    continue;
                var kind = info.LinkTarget is not null ? Kind.Link : info is DirectoryInfo ? Kind.Folder : Kind.File;
                if (kind == Kind.Folder)
                    folders.Enqueue(path);
                yield return (path, kind);
            }
        }
    }

    private List<string> PathsOf(Kind kind) => Walk().Where(entry => entry.Kind == kind).Select(entry => entry.Path).ToList();
}

internal enum Kind
{
    None,
    File,
    Folder,
    Link,
}

/// <summary>The content of a file: a number that is written once, filled up to a size that other versions have too.</summary>
internal static class Version
{
    public static string Write(int number, int size) =>
        $"version {number} of {size} ".PadRight(size - 1, '.') + "!";

    public static bool TryParse(string text, out int number)
    {
        number = 0;
        var words = text.Split(' ');
        return words.Length > 3 && words[0] == "version" && text[^1] == '!'
            && int.TryParse(words[1], NumberStyles.None, CultureInfo.InvariantCulture, out number)
            && int.TryParse(words[3], NumberStyles.None, CultureInfo.InvariantCulture, out var size)
            && text.Length == size;
    }
}
