namespace Quorvex.Tessaport.API.Model;

/// <summary>
/// Two users save files, one on each side, while the drive is synced without a pause. A save reports the version that it replaced
/// in the same step, so that the versions that no user has given up are known exactly.
/// </summary>
internal sealed class RaceRun
{
    private const int Files = 6;
    private const int Size = 64;
    private const int SyncsBetweenDeletions = 20;
    private static readonly DateTime KeptTime = new(2024, 5, 1, 10, 0, 0, DateTimeKind.Utc);

    private readonly World _world;
    private readonly int _seed;
    private readonly Ledger _ledger = new();
    private readonly object _turn = new();
    private volatile bool _ends;
    private int _syncs;

    public RaceRun(World world, int seed)
    {
        _world = world;
        _seed = seed;
    }

    public string Run(TimeSpan time)
    {
        var failures = new List<Exception>();
        var users = _world.Sides.Select((side, number) => new Thread(() => Guard(failures, () => Save(side, new Random(_seed + number))))).ToList();
        users.ForEach(user => user.Start());
        var end = DateTime.UtcNow + time;
        try
        {
            for (; DateTime.UtcNow < end && failures.Count == 0; ++_syncs)
            {
                _world.Sync();
                if (_syncs % SyncsBetweenDeletions == 0)
                    DeleteCopies();
            }
        }
        finally
        {
            _ends = true;
            users.ForEach(user => user.Join());
        }
        if (failures.Count > 0)
            throw new BrokenPromiseException(failures[0].ToString());
        RequireSettled();
        return $"{_syncs} syncs, {_ledger.Written} versions saved meanwhile";
    }

    private void RequireSettled()
    {
        if (!_world.Sync().IsSuccess)
            throw new BrokenPromiseException("A sync in quiet says that something is left.");
        if (_ledger.Missing(_world.Versions()) is { Count: > 0 } missing)
            throw new BrokenPromiseException($"Of {_ledger.Written} versions, {missing.Count} are lost: {string.Join(", ", missing.Take(20))}.");
        if (!_world.Workspace.Files().SequenceEqual(_world.Server.Files()))
            throw new BrokenPromiseException("The sides differ after a sync in quiet.");
    }

    private void Save(Side side, Random random)
    {
        while (!_ends)
        {
            var path = side.At($"{random.Next(Files)}.txt");
            var prepared = Path.Combine(_world.Sources, Path.GetFileName(side.Root));
            var version = Next();
            File.WriteAllText(prepared, Version.Write(version, Size));
            if (random.Next(2) == 0)
                File.SetLastWriteTimeUtc(prepared, KeptTime);
            if (random.Next(3) == 0 ? SaveInPlace(path, version) : SaveByRenaming(path, prepared, version))
                Wrote(version);
            File.Delete(prepared);
            Thread.Sleep(random.Next(4));
        }
    }

    private bool SaveByRenaming(string path, string prepared, int version)
    {
        if (NativeCalls.TryExchange(prepared, path))
        {
            GiveUp(VersionIn(prepared));
            return true;
        }
        try
        {
            File.Move(prepared, path, overwrite: false);
            return true;
        }
        catch (IOException)
        {
            return false;
        }
    }

    // Whoever writes into a file that was opened before it was replaced writes into what is replaced; that save did not happen.
    private bool SaveInPlace(string path, int version)
    {
        try
        {
            using var file = new FileStream(path, FileMode.Open, FileAccess.ReadWrite, FileShare.ReadWrite | FileShare.Delete, bufferSize: 0);
            var before = new byte[Size];
            file.ReadExactly(before);
            file.Position = 0;
            file.Write(System.Text.Encoding.ASCII.GetBytes(Version.Write(version, Size)));
            if (!File.Exists(path) || VersionIn(path) != version)
                return false;
            if (Version.TryParse(System.Text.Encoding.ASCII.GetString(before), out var replaced))
                GiveUp(replaced);
            return true;
        }
        catch (IOException)
        {
            return false;
        }
    }

    // Conflict copies accumulate.
    private void DeleteCopies()
    {
        var copies = _world.Service.GetFolderContents(_world.RootItem()).Where(item => item.Name.Contains('(', StringComparison.Ordinal)).ToList();
        var held = _world.Sides.SelectMany(side => side.Files().Where(file => file.Key.Contains('(', StringComparison.Ordinal))).Select(file => file.Value).ToList();
        var deleted = _world.Service.DeleteItems([.. copies.Select(item => item.Id)]);
        foreach (var version in deleted.IsSuccess ? held : [])
            GiveUp(version);
    }

    private static int VersionIn(string path) => Version.TryParse(File.ReadAllText(path), out var version) ? version : 0;

    private int Next()
    {
        lock (_turn)
            return _ledger.Next();
    }

    private void Wrote(int version)
    {
        lock (_turn)
            _ledger.Write(version);
    }

    private void GiveUp(int version)
    {
        lock (_turn)
            _ledger.GiveUp(version);
    }

    private void Guard(List<Exception> failures, Action user)
    {
        try
        {
            user();
        }
        catch (Exception e)
        {
            lock (failures)
                failures.Add(e);
        }
    }
}
