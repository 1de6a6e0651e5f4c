using System.Diagnostics;

namespace Quorvex.Tessaport.API.Model;

/// <summary>Rounds of user actions and one sync, after which the promises are checked.</summary>
internal sealed class ModelRun
{
    private const int MostActions = 8;
    private const int MostFiles = 40;
    private const int LogLength = 60;

    private readonly World _world;
    private readonly Random _random;
    private readonly Ledger _ledger = new();
    private readonly UserActions _actions;
    private readonly ServiceActions _requests;
    private readonly Queue<string> _log = new();
    private int _kills;
    private int _unfinished;
    private int _oneSided;
    private bool _wasComplete;

    private readonly bool _checksPlans;

    /// <param name="world">The drive.</param>
    /// <param name="seed">For the random numbers.</param>
    /// <param name="checksPlans">Whether each sync does what it said in advance. Nothing is killed then, so that a run can be repeated.</param>
    public ModelRun(World world, int seed, bool checksPlans = false)
    {
        _checksPlans = checksPlans;
        _world = world;
        _random = new Random(seed);
        _actions = new UserActions(world, _ledger, _random);
        _requests = new ServiceActions(world, _ledger, _actions, _random);
    }

    public string Run(int rounds)
    {
        for (var round = 1; round <= rounds; ++round)
        {
            try
            {
                Play(round);
            }
            catch (Exception e) when (e is not OutOfMemoryException)
            {
                throw new BrokenPromiseException(
                    $"Round {round}: {(e is BrokenPromiseException ? e.Message : e.ToString())}\nSteps:\n{string.Join('\n', _log)}\n{_world.Describe()}");
            }
        }
        return $"{rounds} rounds, {_ledger.Written} versions, {_kills} kills, {_oneSided} with changes of one side only, {_unfinished} syncs that said something is left";
    }

    private void Play(int round)
    {
        Log($"round {round}");
        MakeRoom();
        var changed = new HashSet<Side>();
        for (var i = _random.Next(MostActions + 1); i > 0; --i)
        {
            var side = _random.Next(2) == 0 ? _world.Workspace : _world.Server;
            if (_actions.ActOn(side) is { } done)
            {
                changed.Add(side);
                Log($"{(side == _world.Workspace ? "here " : "there")} {done}");
            }
            if (_random.Next(8) == 0 && _requests.Act() is { } requested)
            {
                Log($"service {requested}");
                changed.UnionWith(_world.Sides);
                RequireNothingLost();
            }
        }
        var leftOut = _world.Sides.ToDictionary(side => side, LeftOutOn);
        var links = _world.Sides.ToDictionary(side => side, side => side.LinkTargets());
        var isKilled = _random.Next(30) == 0 && !_checksPlans;
        if (isKilled)
            KillWhileSyncing();
        var isOneSided = changed.Count < 2 && _wasComplete && !isKilled && !_world.Sides.Any(side => side.HasHardLinks());
        var plan = _checksPlans ? new PlanCheck(_world) : null;
        var result = _world.Sync();
        plan?.Require(result);
        if (isOneSided)
            RequireNoConflict(result);
        Check(result, links);
        _wasComplete = result.IsSuccess && !isKilled;
        // A folder that moves can bring files out of what is left out. They are synced then, and a version that was synced before
        // gives way to a newer one.
        if (isKilled || _world.HasMovedFolders(result))
            return;
        foreach (var side in _world.Sides)
            Require(!leftOut[side].Except(side.Files().Values).Any(), () => $"A file in '{side.Root}' that is left out was replaced or removed.");
    }

    private HashSet<int> LeftOutOn(Side side) =>
        side.Files().Where(file => _world.Patterns.LeaveOut(_world, file.Key)).Select(file => file.Value).ToHashSet();

    private List<string> SyncedOf(IEnumerable<string> paths) => paths.Where(path => !_world.Patterns.LeaveOut(_world, path)).ToList();

    private SortedDictionary<string, int> SyncedFiles(Side side) =>
        new(side.Files().Where(file => !_world.Patterns.LeaveOut(_world, file.Key)).ToDictionary(), StringComparer.Ordinal);

    private void Check(CommandResult result, Dictionary<Side, List<string>> links)
    {
        Log($"sync {(result.IsSuccess ? "complete" : "incomplete")}");
        RequireNothingLost();
        Require(_world.IsOutsideUnchanged(), () => "Something outside the drive changed.");
        foreach (var side in _world.Sides)
            Require(side.LinkTargets().SequenceEqual(links[side]), () => $"A link in '{side.Root}' changed.");
        var obstacles = Obstacles.Find(_world);
        if (!result.IsSuccess)
        {
            ++_unfinished;
            Require(obstacles.Count > 0, () => "The sync says that something is left, and nothing is in its way.");
            return;
        }
        Require(SyncedFiles(_world.Workspace).SequenceEqual(SyncedFiles(_world.Server)), () => "The sync says that all is done, and the files of the sides differ.");
        Require(
            SyncedOf(_world.Workspace.Folders()).SequenceEqual(SyncedOf(_world.Server.Folders())),
            () => "The sync says that all is done, and the folders of the sides differ.");
        var again = _world.Sync();
        Require(again is { IsSuccess: true } && !again.ItemsCreated.Any() && again.ItemsUpdated.Count() == 1, () => "A second sync found more to do.");
    }

    private void RequireNoConflict(CommandResult result)
    {
        ++_oneSided;
        var copies = string.Join(", ", result.ItemsCreated.Select(item => item.RelativePath));
        Require(copies.Length == 0, () => $"Only one side has changed, and these copies were kept: {copies}");
    }

    private void RequireNothingLost()
    {
        var missing = _ledger.Missing(_world.Versions());
        Require(missing.Count == 0, () => $"Version {missing[0]} is lost.");
    }

    private void KillWhileSyncing()
    {
        ++_kills;
        var program = Path.Combine(AppContext.BaseDirectory, OperatingSystem.IsWindows() ? "LocalTessaport.Worker.exe" : "LocalTessaport.Worker");
        using var process = Process.Start(new ProcessStartInfo(program, ["sync-only"]) { RedirectStandardOutput = true })!;
        process.StandardOutput.ReadLine();
        Thread.Sleep(_random.Next(30));
        process.Kill();
        process.WaitForExit();
        Log("kill during a sync");
    }

    // Conflict copies and files that come back accumulate.
    private void MakeRoom()
    {
        foreach (var side in _world.Sides)
        {
            if (side.Files().Count > MostFiles || side.Folders().Count > MostFiles)
            {
                foreach (var both in _world.Sides)
                {
                    _ledger.GiveUp(both.Files().Values);
                    foreach (var entry in new DirectoryInfo(both.Root).EnumerateFileSystemInfos())
                        Remove(entry);
                }
                Log("remove everything");
            }
        }
        foreach (var (side, path) in Obstacles.Find(_world))
        {
            if (_random.Next(3) != 0 || side.KindOf(path) is Kind.None)
                continue;
            _ledger.GiveUp(side.Files().Where(file => file.Key == path || file.Key.StartsWith(path + '/', StringComparison.Ordinal)).Select(file => file.Value));
            Remove(side.KindOf(path) == Kind.Folder ? new DirectoryInfo(side.At(path)) : new FileInfo(side.At(path)));
            Log($"remove {path}, which was in the way, {(side == _world.Workspace ? "here" : "there")}");
        }
    }

    private static void Remove(FileSystemInfo entry)
    {
        if (entry is DirectoryInfo folder && entry.LinkTarget is null)
            folder.Delete(recursive: true);
        else
            entry.Delete();
    }

    private static void Require(bool holds, Func<string> what)
    {
        if (!holds)
            throw new BrokenPromiseException(what());
    }

    private void Log(string line)
    {
        _log.Enqueue(line);
        while (_log.Count > LogLength)
            _log.Dequeue();
    }

}
