using System.Text.Json;

namespace Quorvex.Tessaport.API.Model;

/// <summary>
/// Damages the files of the service's home one at a time, makes requests, and puts the file back: no request may do more than fail with a
/// reason, and no version may be lost.
/// </summary>
internal sealed class DamageRun
{
    private const int Files = 4;

    private static readonly string[] Folders = ["workspace", "server"];
    private static readonly string[] OwnFiles = [".json", ".records"];

    private readonly World _world;
    private readonly Random _random;
    private readonly Damage _damage;
    private readonly Dictionary<string, string> _expected = [];
    private int _refused;
    private int _served;

    public DamageRun(World world, int seed)
    {
        _world = world;
        _random = new Random(seed);
        _damage = new Damage(_random);
        for (var number = 0; number < Files; ++number)
            Write(world.Workspace, $"folder {number % 2}/file {number}", "0");
        Require(world.Sync().IsSuccess, "the first sync fails");
    }

    public string Run(int rounds)
    {
        for (var round = 1; round <= rounds; ++round)
            Round(round);
        return $"{rounds} damaged files: {_refused} requests refused with a reason, {_served} served; no version lost";
    }

    private void Round(int round)
    {
        var side = _world.Sides.ElementAt(_random.Next(2));
        Write(side, $"folder {round % 2}/file {round % Files}", $"{round}");
        var file = ChooseFile();
        var before = File.ReadAllBytes(file);
        var damaged = DamagedForm(file, before);
        File.WriteAllBytes(file, damaged);
        try
        {
            foreach (var request in Requests())
                Make(request, file);
            RequireNothingLost();
            Repair(file, before);
            RequireNothingLost();
        }
        catch (Exception e)
        {
            throw new BrokenPromiseException($"Round {round}, '{file}' of {damaged.Length} bytes: {e.Message}\n{Convert.ToBase64String(damaged)}");
        }
    }

    private string ChooseFile()
    {
        var files = new List<string> { Path.Combine(_world.Root, "drives.json"), Path.Combine(_world.Root, "service.json") };
        // Twice: it holds most.
        files.AddRange(Directory.GetFiles(Path.Combine(_world.Root, "state")));
        files.AddRange(Directory.GetFiles(Path.Combine(_world.Root, "state")));
        return files[_random.Next(files.Count)];
    }

    private byte[] DamagedForm(string file, byte[] content)
    {
        if (Path.GetFileName(file) == "drives.json" && _random.Next(2) == 0)
            return JsonSerializer.SerializeToUtf8Bytes(WithPatterns(content));
        var damaged = _damage.Of(content);
        return NamesOtherFolders(damaged) ? content : damaged;
    }

    private JsonElement[] WithPatterns(byte[] drives) => [.. JsonSerializer.Deserialize<Dictionary<string, JsonElement>[]>(drives)!.Select(drive =>
    {
        drive["ignore"] = JsonSerializer.SerializeToElement(Enumerable.Range(0, _random.Next(1, 5)).Select(_ => _damage.Pattern()));
        return JsonSerializer.SerializeToElement(drive);
    })];

    /// <summary>Whether a drive got other folders, which could be anywhere on this machine.</summary>
    private static bool NamesOtherFolders(byte[] drives)
    {
        try
        {
            using var json = JsonDocument.Parse(drives);
            return json.RootElement.ValueKind == JsonValueKind.Array && json.RootElement.EnumerateArray()
                .Where(drive => drive.ValueKind == JsonValueKind.Object)
                .SelectMany(drive => drive.EnumerateObject())
                .Any(member => Folders.Contains(member.Name) && member.Value.ToString() != member.Name);
        }
        catch (Exception e) when (e is JsonException or InvalidOperationException)
        {
            return false;
        }
    }

    private static IEnumerable<Action<TessaportService>> Requests() =>
    [
        service => _ = service.GetDrives().ToList(),
        service => service.GetDrives().ToList().ForEach(drive => _ = service.GetFolderContents(drive.Root.Id).ToList()),
        service => _ = service.GetProperties(service.GetDrives().Select(drive => drive.Root.Id).ToList(), ["Pending", "SyncPlan", "SyncState"]).Values.ToList(),
        service => service.GetDrives().ToList().ForEach(drive => service.SyncFiles([drive.Root.Id])),
    ];

    private void Make(Action<TessaportService> request, string file)
    {
        try
        {
            request(new TessaportService());
            ++_served;
        }
        catch (Exception e) when (e is IOException or InvalidDataException or UnauthorizedAccessException)
        {
            Require(e.Message.Contains(Path.GetFileName(file), StringComparison.Ordinal) || !OwnFiles.Any(own => e.Message.Contains(own, StringComparison.Ordinal)),
                $"the reason names another file: {e.Message}");
            ++_refused;
        }
        catch (Exception e) when (e.GetType().Name.StartsWith("Tessaport", StringComparison.Ordinal))
        {
            ++_refused; // What the state of the service calls for.
        }
    }

    // Puts the file back, or removes it as the message about it says.
    private void Repair(string file, byte[] before)
    {
        if (file.EndsWith("drives.json", StringComparison.Ordinal) || file.EndsWith("service.json", StringComparison.Ordinal))
            File.WriteAllBytes(file, before);
        else
            File.Delete(file);
        Require(_world.Sync().IsSuccess, "the sync after the repair fails");
        Require(_world.Workspace.Walk().Select(entry => entry.Path).Order(StringComparer.Ordinal)
            .SequenceEqual(_world.Server.Walk().Select(entry => entry.Path).Order(StringComparer.Ordinal)), "the sides differ after the repair");
    }

    private void Write(Side side, string path, string content)
    {
        Directory.CreateDirectory(Path.GetDirectoryName(side.At(path))!);
        File.WriteAllText(side.At(path), content);
        _expected[path] = content;
    }

    private void RequireNothingLost()
    {
        var contents = _world.Sides
            .SelectMany(side => Directory.GetFiles(side.Root, "*", SearchOption.AllDirectories))
            .Select(File.ReadAllText)
            .ToHashSet();
        foreach (var (path, content) in _expected)
            Require(contents.Contains(content), $"the version {content} of '{path}' is lost");
    }

    private static void Require(bool holds, string otherwise)
    {
        if (!holds)
            throw new BrokenPromiseException(otherwise);
    }
}
