using System.Text.Json;
using Quorvex.Tessaport.API.Local;

namespace Quorvex.Tessaport.API.Model;

/// <summary>What a sync says in advance that it would do, compared with what it then does.</summary>
internal sealed class PlanCheck
{
    private readonly World _world;
    private readonly string _before;
    private readonly SortedSet<string> _planned = new(StringComparer.Ordinal);
    private readonly Dictionary<string, string> _failing = [];

    /// <summary>Asks for the plan.</summary>
    public PlanCheck(World world)
    {
        _world = world;
        _before = world.Describe();
        using var plan = JsonDocument.Parse((string)Value(world.RootItem(), "SyncPlan")!);
        foreach (var item in plan.RootElement.EnumerateArray())
        {
            var path = item.GetProperty("path").GetString()!;
            if (item.TryGetProperty("error", out var error))
                _failing[path] = error.GetString()!;
            else
                _planned.Add($"{item.GetProperty("action").GetString()} {path}");
        }
        if (world.Describe() != _before)
            throw new BrokenPromiseException("Asking what a sync would do changed something.");
        RequireSameStatus();
    }

    /// <summary>Compares the plan with the result of the sync.</summary>
    public void Require(CommandResult result)
    {
        var done = new SortedSet<string>(StringComparer.Ordinal);
        foreach (var item in result.ItemsUpdated)
        {
            if (Value(item.Id, "SyncAction") is { } action)
                done.Add($"{action} {item.RelativePath}");
        }
        foreach (var item in result.ItemsCreated)
            done.Add($"kept-twice {item.RelativePath}");
        if (!done.SetEquals(_planned))
            throw new BrokenPromiseException(
                $"The plan was: {string.Join(", ", _planned.Except(done))}; instead was done: {string.Join(", ", done.Except(_planned))}\n"
                + $"Both said: {string.Join(", ", _planned.Intersect(done))}\nBefore the sync:\n{_before}");
        if (result.IsSuccess != (_failing.Count == 0))
            throw new BrokenPromiseException($"The plan was to fail for '{string.Join(", ", _failing)}', and the sync says {result.IsSuccess}.");
        foreach (var (path, reason) in _failing)
        {
            if (_world.Find(path.Replace('\\', '/')) is { } item && (string?)Value(item.Id, "SyncError") is var actual && actual != reason)
                throw new BrokenPromiseException($"The plan was to fail for '{path}' because: {reason} It failed because: {actual}");
        }
    }

    // What is not in sync is found in two ways: from the records as they are stored, and from objects once something changed.
    private void RequireSameStatus()
    {
        IndexStore.ForgetAll();
        var fromStored = Value(_world.RootItem(), "Pending");
        var drive = _world.Service.GetDrives().Single().Id;
        IndexStore.Load(HomeFolder.Locate(), drive).Synced.Below(RelativePath.Root);
        if (Value(_world.RootItem(), "Pending") is var fromObjects && !Equals(fromStored, fromObjects))
            throw new BrokenPromiseException($"From the stored records, this is not in sync: {fromStored} From objects: {fromObjects}");
    }

    private object? Value(ItemId item, string property) =>
        _world.Service.GetProperties([item], [property]).Values.SingleOrDefault()?.Value;
}
