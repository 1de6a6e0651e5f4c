using System.Text.Json;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>The property that lists everything in a folder that is not in sync.</summary>
public sealed class PendingTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public PendingTests()
    {
        _drive = _home.AddDrive(locking: true);
        _home.Service.Discover();
    }

    public void Dispose() => _home.Dispose();

    [Fact]
    public void EachPendingItemHasTheStateThatTheItemItselfHas()
    {
        foreach (var name in new[] { "same.txt", "plans/here.txt", "plans/server.txt", "both.txt", "locked.txt" })
            _drive.PutBoth(name, "old");
        Assert.True(_drive.Sync("").IsSuccess);
        _drive.PutInWorkspace("plans/here.txt", "mine", 3);
        _drive.PutOnServer("plans/server.txt", "theirs", 3);
        _drive.PutInWorkspace("both.txt", "mine", 3);
        _drive.PutOnServer("both.txt", "theirs", 4);
        _drive.PutInWorkspace("new/deep/new.txt");
        _drive.PutOnServer("remote.txt");
        _home.Service.ExecuteCommand(new Command { Id = "lock" }, new CommandContext(IntPtr.Zero, _drive.Item("locked.txt").Id, []));

        var pending = Pending("");

        Assert.Equal(
            [
                @"both.txt changed-on-both", "locked.txt locked", "new only-here", @"new\deep only-here", @"new\deep\new.txt only-here",
                @"plans\here.txt changed-here", @"plans\server.txt changed-on-server", "remote.txt only-on-server",
            ],
            pending.Select(item => $"{item["path"]} {item["state"]}"));
        Assert.All(pending, item => Assert.Equal(Value((string)item["path"]!, "SyncState"), item["state"]!.ToString()));
        Assert.Equal([Environment.UserName], pending.Select(item => item.GetValueOrDefault("lockedBy")).OfType<string>());
        Assert.Equal(["new", @"new\deep"], pending.Where(item => item["folder"] is true).Select(item => item["path"]));
        Assert.Equal([@"plans\here.txt", @"plans\server.txt"], Pending("plans").Select(item => item["path"]));
        Assert.Equal("changed-here", Assert.Single(Pending("plans/here.txt"))["state"]);
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Equal(["in-sync", "locked"], Pending("").Select(item => item["state"]).Order());
    }

    [UnixFact]
    public void WhatASyncDoesNotLookAtIsNotListed()
    {
        _drive.PutInWorkspace("con/inner/deep.txt");
        _drive.PutBoth("aux.txt");
        _drive.PutInWorkspace("x", "a file");
        _drive.PutOnServer("x/inner.txt");
        Assert.False(_drive.Sync("").IsSuccess);

        var pending = Pending("");

        Assert.Equal(["con left-out", "x failed"], pending.Select(item => $"{item["path"]} {item["state"]}"));
        Assert.All(pending, item => Assert.Equal(Value((string)item["path"]!, "SyncError"), item["error"]));
    }

    [Fact]
    public void ANameIsListedAsItIs()
    {
        var name = OperatingSystem.IsWindows() ? "图 é.txt" : "a \"b\"\n图 é.txt";
        _drive.PutInWorkspace(name);

        Assert.Equal(name, Assert.Single(Pending(""))["path"]);
    }

    [Fact]
    public void ItIsNoPropertyThatIsAskedForWithAllOthers()
    {
        Assert.DoesNotContain("Pending", _home.Service.GetPropertyDefinitions(_drive.Id).Select(definition => definition.Id));
        Assert.Equal("[]", Value("", "Pending"));
        _home.Configure(_drive, "offline", true);
        Assert.Empty(_home.Service.GetProperties([_drive.Root.Id], ["Pending"]).Values);
    }

    /// <summary>Records are compared as they are stored until something is changed, then as objects.</summary>
    [Fact]
    public void TheListIsTheSameFromStoredRecordsAndFromObjects()
    {
        string[] names = ["same", "edited", "touched", "replaced", "gone here", "gone there", "file here", "locked", "noted", "left.tmp"];
        foreach (var folder in new[] { "", "plans/", "plans/deep/" })
        {
            foreach (var name in names)
                _drive.PutBoth(folder + name);
        }
        _drive.PutInWorkspace("twice.txt", "mine", 1);
        _drive.PutOnServer("twice.txt", "theirs", 2);
        Assert.True(_drive.Sync("").IsSuccess);
        foreach (var folder in new[] { "", "plans/", "plans/deep/" })
        {
            foreach (var side in new[] { _drive.Workspace, _drive.Server })
                Change(side + Path.DirectorySeparatorChar + folder, side == _drive.Workspace);
            _home.Service.ExecuteCommand(new Command { Id = "lock" }, new CommandContext(IntPtr.Zero, _drive.Item(folder + "locked").Id, []));
        }
        Directory.Delete(_drive.InWorkspace("plans/deep"), recursive: true);
        _home.Configure(_drive, "ignore", new[] { "*.tmp" });
        using (var held = HomeLock.Acquire(HomeFolder.Locate()))
        {
            var index = IndexStore.Load(HomeFolder.Locate(), _drive.Id).Clone();
            index.Failures.Put(@"plans\noted", "reason");
            IndexStore.Save(HomeFolder.Locate(), _drive.Id, index);
        }
        IndexStore.ForgetAll();

        var fromStored = Value("", "Pending");

        var synced = IndexStore.Load(HomeFolder.Locate(), _drive.Id).Synced;
        Assert.NotNull(synced.Stored);
        synced.Below("");
        Assert.Null(synced.Stored);
        Assert.Equal(Value("", "Pending"), fromStored);
        Assert.Equal(
            [
                "edited changed-here", "file here changed-on-both", "gone here only-on-server", "gone there only-here", "locked locked",
                "replaced changed-on-server", "twice (conflict 2024-05-01 100100).txt in-sync",
            ],
            States().Where(state => !state.StartsWith("plans", StringComparison.Ordinal)));
        Assert.Contains(@"plans\noted in-sync", States());
        Assert.Contains(@"plans\deep\same only-on-server", States());
    }

    private IEnumerable<string> States() => Pending("").Select(item => $"{item["path"]} {item["state"]}");

    private static void Change(string folder, bool isWorkspace)
    {
        if (isWorkspace)
        {
            File.WriteAllText(folder + "edited", "another length");
            File.SetLastWriteTimeUtc(folder + "touched", File.GetLastWriteTimeUtc(folder + "touched"));
            File.Delete(folder + "gone here");
            File.AppendAllText(folder + "left.tmp", "more");
        }
        else
        {
            File.WriteAllText(folder + "new", "another length");
            File.Move(folder + "new", folder + "replaced", overwrite: true);
            File.Delete(folder + "gone there");
            File.Delete(folder + "file here");
            Directory.CreateDirectory(folder + "file here");
        }
    }

    private string? Value(string path, string property) =>
        (string?)_home.Service.GetProperties([path.Length == 0 ? _drive.Root.Id : _drive.Item(path).Id], [property]).Values.SingleOrDefault()?.Value;

    private List<Dictionary<string, object?>> Pending(string path)
    {
        using var list = JsonDocument.Parse(Value(path, "Pending")!);
        return list.RootElement.EnumerateArray().Select(item => item.EnumerateObject().ToDictionary(
            member => member.Name, member => member.Value.ValueKind == JsonValueKind.String ? (object?)member.Value.GetString() : member.Value.GetBoolean())).ToList();
    }
}
