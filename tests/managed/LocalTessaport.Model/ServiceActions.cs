using Quorvex.Tessaport.API.Local;

namespace Quorvex.Tessaport.API.Model;

/// <summary>Requests other than a sync of the drive.</summary>
internal sealed class ServiceActions
{
    private static readonly string[] Settlements = ["use-this-version", "discard-this-version", "keep-both-versions"];

    private readonly World _world;
    private readonly Ledger _ledger;
    private readonly UserActions _user;
    private readonly Random _random;

    public ServiceActions(World world, Ledger ledger, UserActions user, Random random)
    {
        _world = world;
        _ledger = ledger;
        _user = user;
        _random = random;
    }

    public string? Act() => _random.Next(7) switch
    {
        0 => Add(),
        1 => Delete(),
        2 => Close(),
        3 => SyncOne(),
        4 => Settle(),
        5 => SetPatterns(),
        _ => AskForIds(),
    };

    private string? Add()
    {
        var files = _world.Workspace.Files().Keys.ToList();
        var name = files.Count > 0 && _random.Next(2) == 0 ? files[_random.Next(files.Count)] : "added.txt";
        var folder = _world.Find(Path.GetDirectoryName(name)!) ?? _world.Find("");
        if (folder is not { IsFolder: true })
            return null;
        var source = Path.Combine(_world.Sources, Path.GetFileName(name));
        File.WriteAllText(source, _user.NewContent(out var version));
        var everything = _ledger.OwedAmong(_world.Versions());
        var (result, replaced) = AddTo(folder.Id, source, name);
        File.Delete(source);
        if (!result.IsSuccess)
            replaced = [];
        var lost = everything.Except(_world.Versions()).Except(replaced).ToList();
        if (lost.Count > 0)
            throw new BrokenPromiseException($"Adding '{name}' lost the versions {string.Join(", ", lost)}.");
        if (result.IsSuccess)
            _ledger.Write(version);
        // Files that changed places may still be where they were before on the other side, from where the next sync removes them.
        _ledger.GiveUp(replaced);
        return $"add {name} = {version}: {result.IsSuccess}";
    }

    // Also returns the versions that the file had once it was synced, which is when the added one replaces it.
    private (CommandResult Result, List<int> Replaced) AddTo(ItemId folder, string source, string path)
    {
        List<int> replaced = [];
        Step.Hook = (step, _) =>
        {
            if (step == "Add.Synced")
                replaced = VersionsAt(path);
        };
        try
        {
            var result = _world.Service.AddFiles(folder, [source]);
            return (result, replaced);
        }
        finally
        {
            Step.Hook = null;
        }
    }

    private string? Delete()
    {
        if (PickAny() is not { } path || _random.Next(3) != 0 || _world.Find(path) is not { } item)
            return null;
        var held = _world.Sides.SelectMany(side => side.Files()
            .Where(file => file.Key == path || file.Key.StartsWith(path + '/', StringComparison.Ordinal)).Select(file => file.Value)).ToList();
        var result = _world.Service.DeleteItems([item.Id]);
        if (result.IsSuccess)
            _ledger.GiveUp(held);
        return $"delete {path}: {result.IsSuccess}";
    }

    private string? Close()
    {
        if (_world.Workspace.Files().Keys.ToList() is not { Count: > 0 } files)
            return null;
        var path = files[_random.Next(files.Count)];
        try
        {
            _world.Service.FileClosedWithinRunningProcess(1, _world.Workspace.At(path));
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return $"close {path}: {e.Message}";
        }
        return $"close {path}";
    }

    private string? SyncOne()
    {
        if (PickAny() is not { } path || _world.Find(path) is not { } item)
            return null;
        return $"sync {path}: {_world.Service.SyncFiles([item.Id]).IsSuccess}";
    }

    private string? Settle()
    {
        var copies = _world.Workspace.Files().Keys.Where(path => OtherVersionOf(path) is not null).ToList();
        if (copies.Count == 0)
            return null;
        var copy = copies[_random.Next(copies.Count)];
        var other = OtherVersionOf(copy)!;
        var command = Settlements[_random.Next(Settlements.Length)];
        var given = command == Settlements[0] ? VersionsAt(other) : command == Settlements[1] ? VersionsAt(copy) : [];
        var used = VersionsAt(copy);
        var result = _world.Service.ExecuteCommand(new Command { Id = command }, new CommandContext(IntPtr.Zero, _world.Find(copy)!.Id, []));
        if (!result.IsSuccess)
            return $"{command} {copy}: False";
        if (command == Settlements[0] && !_world.Sides.All(side => used.Contains(side.VersionAt(other))))
            throw new BrokenPromiseException($"'{other}' does not hold the version of '{copy}' that was to be used.");
        _ledger.GiveUp(given);
        return $"{command} {copy}: True";
    }

    private string SetPatterns()
    {
        _world.SetPatterns(Patterns.Pick(_random));
        return $"set the patterns {_world.Patterns}";
    }

    private string? OtherVersionOf(string path) => _world.Find(path) is { IsFolder: false } item
        ? ((string?)_world.Service.GetProperties([item.Id], ["ConflictOf"]).Values.SingleOrDefault()?.Value)?.Replace('\\', '/')
        : null;

    private List<int> VersionsAt(string path) =>
        _world.Sides.SelectMany(side => side.Files().Where(file => file.Key == path).Select(file => file.Value)).ToList();

    private string? AskForIds()
    {
        if (PickAny() is not { } path || _world.Find(path) is not { } item)
            return null;
        _world.Service.GetPermanentIds([item.Id]);
        return $"ask for the id of {path}";
    }

    private string? PickAny()
    {
        var paths = _world.Sides.SelectMany(side => side.Walk()).Where(entry => entry.Kind != Kind.Link).Select(entry => entry.Path).Distinct().ToList();
        return paths.Count == 0 ? null : paths[_random.Next(paths.Count)];
    }
}
