namespace Quorvex.Tessaport.API.Model;

/// <summary>A small drive, what users did to it since the last sync, and a command of the tool that is to be interrupted.</summary>
internal sealed class ToolScenario : IDisposable
{
    private static readonly string[] Places = ["a.txt", "b.txt", "p/c.txt", "p/d.txt", "p/q/e.txt", "r/f.txt"];
    private const int Refused = 1;
    private const int NameTaken = 2;
    private const int NotFound = 3;

    private static readonly int[] Sizes = [40, 40, 64, 300];
    private static readonly DateTime FirstTime = new(2024, 5, 1, 10, 0, 0, DateTimeKind.Utc);

    private readonly Random _random;
    private readonly List<string> _steps = [];
    private readonly HashSet<int> _owed = [];
    private readonly HashSet<int> _owedAtEnd = [];
    private readonly HashSet<string> _unflushed = [];
    private readonly bool _flushes;
    private readonly Side _workspace;
    private readonly Side _server;
    private int _version;
    private int _minutes;

    public ToolScenario(Random random, string root)
    {
        _random = random;
        Root = root;
        Home = Path.Combine(root, "home");
        _workspace = new Side(Path.Combine(Home, "workspace"));
        _server = new Side(Path.Combine(Home, "server"));
        _flushes = random.Next(2) == 0;
        TestHome.Write(Home);
        foreach (var place in Places)
            WriteOnBoth(place);
        TestHome.Sync(Home);
        KeepNumbers();
        // The new links changed the files' times of change.
        TestHome.Sync(Home);
        Choose();
        KeepNumbers();
    }

    public string Root { get; }

    public string Home { get; }

    /// <summary>Further names of the files, so that an image of the drive can have files with the same numbers.</summary>
    public Dictionary<ulong, string> Kept { get; } = [];

    public string[] Command { get; private set; } = [];

    public HashSet<int> SuccessCodes { get; private set; } = [0];

    /// <summary>What a repetition of the command after a kill may end with: what it was for can be done already.</summary>
    public HashSet<int> SuccessCodesOfRepetition => Command[0] switch
    {
        "rm" or "drive" or "conflicts" => [0, Refused, NameTaken, NotFound],
        _ => SuccessCodes,
    };

    public string Kind => Command[0] == "drive" ? $"drive {Command[1]}" : Command[0];

    /// <summary>The versions that must not be lost, at any moment of the command.</summary>
    public IReadOnlySet<int> Owed => _owed;

    /// <summary>Those that must not be lost either once the command has said that it is done.</summary>
    public IReadOnlySet<int> OwedAtEnd => _owedAtEnd;

    /// <summary>The files that users wrote and did not flush.</summary>
    public IReadOnlySet<string> Unflushed => _unflushed;

    public string Describe() => $"{string.Join('\n', _steps)}\n{string.Join(' ', Command)}{(_flushes ? "" : "\nUsers did not flush what they wrote.")}";

    /// <summary>Gives each file another name outside the drive, which keeps its number from being reused.</summary>
    public void KeepNumbers()
    {
        var folder = Directory.CreateDirectory(Path.Combine(Root, "kept")).FullName;
        foreach (var file in Directory.EnumerateFiles(Home, "*", SearchOption.AllDirectories))
        {
            var number = NativeCalls.NumberOf(file);
            if (Kept.ContainsKey(number))
                continue;
            Kept[number] = Path.Combine(folder, $"{number}");
            NativeCalls.HardLink(file, Kept[number]);
        }
    }

    public void Dispose() => Directory.Delete(Root, recursive: true);

    private void Choose()
    {
        switch (_random.Next(14))
        {
            case < 6:
                ChangeBySomeUsers();
                Set([0, 7], "sync");
                break;
            case < 8:
                Add();
                break;
            case 8:
                Remove();
                break;
            case 9:
                Set([0], "mkdir", _workspace.At($"p/new/deeper"));
                break;
            case < 12:
                KeepOne();
                break;
            case 12:
                Set([0], "drive", "set", "Model", "--name", "Renamed");
                break;
            default:
                AddDrive();
                break;
        }
        _owedAtEnd.UnionWith(_owed);
    }

    private void Set(int[] codes, params string[] command)
    {
        SuccessCodes = [.. codes];
        Command = command;
    }

    private void ChangeBySomeUsers()
    {
        for (var left = _random.Next(1, 6); left > 0; --left)
            Change(_random.Next(2) == 0 ? _workspace : _server);
    }

    private void Change(Side side)
    {
        var place = Pick(Places);
        var isHere = File.Exists(side.At(place));
        switch (_random.Next(8))
        {
            case < 3 when isHere:
                Edit(side, place);
                break;
            case 3 when File.Exists(_workspace.At(place)) && File.Exists(_server.At(place)):
                Edit(_workspace, place);
                Edit(_server, place);
                break;
            case 4:
                Write(side, $"{Pick(["", "p/", "new/"])}new {++_minutes}.txt");
                break;
            case 5 when isHere:
                File.Move(side.At(place), side.At($"renamed {++_minutes}.txt"));
                Note($"rename {place} to renamed {_minutes}.txt in {side.Root}");
                break;
            case 6 when isHere && File.Exists(side.At("a.txt")) && place != "a.txt" && _unflushed.Count == 0:
                NativeCalls.TryExchange(side.At(place), side.At("a.txt"));
                Note($"exchange {place} and a.txt in {side.Root}");
                break;
            case 7 when isHere && _unflushed.Count == 0 && Directory.Exists(side.At("r")):
                Directory.Move(side.At("r"), side.At($"folder {++_minutes}"));
                Note($"rename r to folder {_minutes} in {side.Root}");
                break;
            default:
                break;
        }
    }

    private void Add()
    {
        var sources = Directory.CreateDirectory(Path.Combine(Root, "sources")).FullName;
        var names = new[] { "c.txt", "d.txt", "added.txt", "added too.txt" }[..(_random.Next(4) + 1)];
        foreach (var name in names)
        {
            // The version that is there gives way to the new one.
            if (File.Exists(_workspace.At("p/" + name)))
                GiveUp(_workspace, "p/" + name);
            File.WriteAllText(Path.Combine(sources, name), Version.Write(++_version, Pick(Sizes)));
            _owedAtEnd.Add(_version);
        }
        Set([0], ["add", .. names.Select(name => Path.Combine(sources, name)), _workspace.At("p")]);
    }

    private void Remove()
    {
        var path = Pick(["p", "a.txt", "r"]);
        foreach (var place in Places.Where(place => place == path || place.StartsWith(path + '/', StringComparison.Ordinal)))
            GiveUp(_workspace, place);
        Set([0], "rm", "-r", "-y", _workspace.At(path));
    }

    private void KeepOne()
    {
        var place = Pick(Places);
        Edit(_workspace, place);
        Edit(_server, place);
        TestHome.Sync(Home);
        _unflushed.Clear();
        var copy = _workspace.Files().Keys.Single(path => path.Contains("(conflict ", StringComparison.Ordinal));
        var way = Pick(["--this", "--other", "--both"]);
        // Of the named one.
        if (way == "--this")
            GiveUp(_workspace, copy);
        if (way == "--other")
            GiveUp(_workspace, place);
        Set([0], "conflicts", "keep", way, _workspace.At(place));
    }

    private void AddDrive()
    {
        var second = Path.Combine(Home, "drives", "second");
        var sides = new[] { "workspace", "server" }.Select(name => new Side(Path.Combine(second, name))).ToArray();
        Write(sides[0], "same.txt");
        File.Copy(sides[0].At("same.txt"), sides[1].At("same.txt"));
        foreach (var side in sides)
        {
            Write(side, "both.txt");
            Write(side, $"only in {Path.GetFileName(side.Root)}.txt");
        }
        if (_random.Next(2) == 0)
        {
            TestHome.WriteWithSecond(Home);
            Set([0, 7], "sync");
            return;
        }
        // The service does not look at them before the next command.
        _unflushed.Clear();
        Set([0], "drive", "add", "Second", "--workspace", sides[0].Root, "--server", sides[1].Root);
    }

    private void Edit(Side side, string place)
    {
        GiveUp(side, place);
        Write(side, place);
    }

    private void WriteOnBoth(string place)
    {
        Write(_workspace, place);
        Directory.CreateDirectory(Path.GetDirectoryName(_server.At(place))!);
        File.Copy(_workspace.At(place), _server.At(place));
        _unflushed.Clear();
    }

    private void Write(Side side, string place)
    {
        Directory.CreateDirectory(Path.GetDirectoryName(side.At(place))!);
        File.WriteAllText(side.At(place), Version.Write(++_version, Pick(Sizes)));
        File.SetLastWriteTimeUtc(side.At(place), FirstTime.AddMinutes(++_minutes));
        _owed.Add(_version);
        if (!_flushes)
            _unflushed.Add(side.At(place));
        Note($"write version {_version} to {side.At(place)}");
    }

    private void GiveUp(Side side, string place) => _owed.Remove(side.VersionAt(place));

    private void Note(string step) => _steps.Add(step);

    private T Pick<T>(T[] choices) => choices[_random.Next(choices.Length)];
}
