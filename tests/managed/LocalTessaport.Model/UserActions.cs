namespace Quorvex.Tessaport.API.Model;

/// <summary>
/// What a user does to one side without the service. Each action says what it did, or returns null if it did not apply.
/// </summary>
internal sealed class UserActions
{
    private static readonly string[] FileNames = ["a.txt", "b.txt", "c.txt", "d.txt", "e"];
    private static readonly string[] FolderNames = ["p", "q", "r"];
    private static readonly int[] Sizes = [40, 40, 40, 64, 9000];

    private readonly World _world;
    private readonly Ledger _ledger;
    private readonly Random _random;
    private readonly (int Weight, Func<Side, string?> Act)[] _actions;

    public UserActions(World world, Ledger ledger, Random random)
    {
        _world = world;
        _ledger = ledger;
        _random = random;
        _actions =
        [
            (12, WriteNew), (10, Edit), (8, EditKeepingSizeAndTime), (5, SaveByRenaming), (12, RenameFile), (6, SwapFiles), (3, RotateFiles),
            (4, MakeFolder), (7, MoveFolder), (3, SwapFolders), (3, Touch), (2, HardLink), (2, LinkToOutside), (2, ReplaceFolderByLink),
            (4, RemoveFile), (2, RemoveFolder), (1, RenameToReserved), (5, RemoveLink), (1, ChangeRights),
        ];
    }

    public string? ActOn(Side side)
    {
        var drawn = _random.Next(_actions.Sum(action => action.Weight));
        return _actions.First(action => (drawn -= action.Weight) < 0).Act(side);
    }

    public string NewContent(out int version)
    {
        version = _ledger.Next();
        return Version.Write(version, Pick(Sizes));
    }

    private string? WriteNew(Side side)
    {
        var path = FreePath(side, FileNames);
        if (path is null)
            return null;
        var version = WriteAt(side.At(path), Pick(Sizes));
        return $"write {path} = {version}";
    }

    private string? Edit(Side side)
    {
        if (PickFile(side) is not { } path)
            return null;
        _ledger.GiveUp(side.VersionAt(path));
        return $"edit {path} = {WriteAt(side.At(path), Pick(Sizes))}";
    }

    private string? EditKeepingSizeAndTime(Side side)
    {
        if (PickFile(side) is not { } path)
            return null;
        _ledger.GiveUp(side.VersionAt(path));
        var file = new FileInfo(side.At(path));
        var (size, time) = ((int)file.Length, file.LastWriteTimeUtc);
        var version = WriteAt(side.At(path), size);
        File.SetLastWriteTimeUtc(side.At(path), time);
        return $"edit {path} = {version}, size and time kept";
    }

    private string? SaveByRenaming(Side side)
    {
        if (PickFile(side) is not { } path)
            return null;
        _ledger.GiveUp(side.VersionAt(path));
        var keepsTime = _random.Next(2) == 0;
        var (size, time) = ((int)new FileInfo(side.At(path)).Length, File.GetLastWriteTimeUtc(side.At(path)));
        var version = WriteAt(side.At(path) + "~", size);
        if (keepsTime)
            File.SetLastWriteTimeUtc(side.At(path) + "~", time);
        File.Move(side.At(path) + "~", side.At(path), overwrite: true);
        return $"save {path} = {version} by renaming{(keepsTime ? ", time kept" : "")}";
    }

    private string? RenameFile(Side side)
    {
        if (PickFile(side) is not { } path)
            return null;
        var target = _random.Next(5) == 0 ? PickFile(side) : FreePath(side, FileNames);
        if (target is null || target == path)
            return null;
        if (File.Exists(side.At(target)))
            _ledger.GiveUp(side.VersionAt(target));
        File.Move(side.At(path), side.At(target), overwrite: true);
        return $"rename {path} to {target}";
    }

    private string? SwapFiles(Side side)
    {
        if (PickFile(side) is not { } one || PickFile(side) is not { } other || one == other)
            return null;
        Rotate(side, [one, other]);
        return $"swap {one} and {other}";
    }

    private string? RotateFiles(Side side)
    {
        var files = side.Files().Keys.OrderBy(_ => _random.Next()).Take(_random.Next(3, 6)).ToList();
        if (files.Count < 3)
            return null;
        Rotate(side, files);
        return $"rotate {string.Join(", ", files)}";
    }

    private string? MakeFolder(Side side)
    {
        if (FreePath(side, FolderNames) is not { } path)
            return null;
        Directory.CreateDirectory(side.At(path));
        return $"make folder {path}";
    }

    private string? MoveFolder(Side side)
    {
        if (PickFolder(side) is not { } path || FreePath(side, FolderNames) is not { } target || IsInside(target, path))
            return null;
        Directory.Move(side.At(path), side.At(target));
        return $"move folder {path} to {target}";
    }

    private string? SwapFolders(Side side)
    {
        if (PickFolder(side) is not { } one || PickFolder(side) is not { } other || one == other || IsInside(one, other) || IsInside(other, one))
            return null;
        Rotate(side, [one, other]);
        return $"swap folders {one} and {other}";
    }

    private string? Touch(Side side)
    {
        if (PickFile(side) is not { } path)
            return null;
        File.SetLastWriteTimeUtc(side.At(path), PickTime());
        return $"touch {path}";
    }

    private string? HardLink(Side side)
    {
        if (PickFile(side) is not { } path || FreePath(side, FileNames) is not { } link)
            return null;
        NativeCalls.HardLink(side.At(path), side.At(link));
        return $"hard link {link} to {path}";
    }

    private string? LinkToOutside(Side side)
    {
        if (OperatingSystem.IsWindows() || FreePath(side, FileNames) is not { } path)
            return null;
        File.CreateSymbolicLink(side.At(path), Path.Combine(_world.Outside, "a.txt"));
        return $"link {path} to outside";
    }

    private string? ReplaceFolderByLink(Side side)
    {
        if (OperatingSystem.IsWindows() || PickFolder(side) is not { } path || FreePath(side, FolderNames) is not { } target || IsInside(target, path))
            return null;
        Directory.Move(side.At(path), side.At(target));
        Directory.CreateSymbolicLink(side.At(path), Path.Combine(_world.Outside, "p"));
        return $"move folder {path} to {target} and link {path} to outside";
    }

    private string? RemoveFile(Side side)
    {
        if (PickFile(side) is not { } path)
            return null;
        _ledger.GiveUp(side.VersionAt(path));
        File.Delete(side.At(path));
        return $"remove {path}";
    }

    private string? RemoveFolder(Side side)
    {
        if (PickFolder(side) is not { } path)
            return null;
        _ledger.GiveUp(side.Files().Where(file => IsInside(file.Key, path)).Select(file => file.Value));
        Directory.Delete(side.At(path), recursive: true);
        return $"remove folder {path}";
    }

    private string? RenameToReserved(Side side)
    {
        if (OperatingSystem.IsWindows() || PickFile(side) is not { } path || File.Exists(side.At("con.txt")))
            return null;
        File.Move(side.At(path), side.At("con.txt"));
        return $"rename {path} to con.txt";
    }

    private string? RemoveLink(Side side)
    {
        if (side.Links() is not { Count: > 0 } links)
            return null;
        var path = Pick(links);
        File.Delete(side.At(path));
        return $"remove link {path}";
    }

    private string? ChangeRights(Side side)
    {
        if (OperatingSystem.IsWindows() || PickFile(side) is not { } path)
            return null;
        File.SetUnixFileMode(side.At(path), UnixFileMode.UserRead | UnixFileMode.UserWrite | (UnixFileMode)_random.Next(64));
        return $"change the rights of {path}";
    }

    private static void Rotate(Side side, IReadOnlyList<string> paths)
    {
        var aside = side.At("~aside");
        Directory.Move(side.At(paths[0]), aside);
        for (var i = 1; i < paths.Count; ++i)
            Directory.Move(side.At(paths[i]), side.At(paths[i - 1]));
        Directory.Move(aside, side.At(paths[^1]));
    }

    private int WriteAt(string path, int size)
    {
        var version = _ledger.Next();
        File.WriteAllText(path, Version.Write(version, size));
        if (_random.Next(2) == 0)
            File.SetLastWriteTimeUtc(path, PickTime());
        _ledger.Write(version);
        return version;
    }

    private string? FreePath(Side side, string[] names)
    {
        var folders = side.Folders().Where(folder => folder.Count(c => c == '/') < 3).Prepend("").ToList();
        var path = Path.Combine(Pick(folders), Pick(names)).Replace('\\', '/');
        return side.KindOf(path) == Kind.None ? path : null;
    }

    private string? PickFile(Side side) => side.Files().Keys.ToList() is { Count: > 0 } files ? Pick(files) : null;

    private string? PickFolder(Side side) => side.Folders() is { Count: > 0 } folders ? Pick(folders) : null;

    // Few times, so that many files have the same one.
    private DateTime PickTime() => new(2024, 5, 1, 10, _random.Next(3), 0, DateTimeKind.Utc);

    private T Pick<T>(IReadOnlyList<T> list) => list[_random.Next(list.Count)];

    private static bool IsInside(string path, string folder) => path == folder || path.StartsWith(folder + '/', StringComparison.Ordinal);
}
