using System.Diagnostics;
using System.Globalization;
using Quorvex.Tessaport.API.Model;

// Usage: LocalTessaport.Model rounds <count> [<seed>] | plans <count> [<seed>] | race <seconds> [<seed>] | damage <count> [<seed>] |
// power <commands> [<seed>] | kills <count> [<seed>]
// Exit code 0: every check passed. 1: one failed; the output has the seed and the steps. 2: wrong usage.
if (args.Length is < 2 or > 3 || !int.TryParse(args[1], NumberStyles.None, CultureInfo.InvariantCulture, out var amount))
{
    Console.Error.WriteLine("Usage: LocalTessaport.Model rounds <count> [<seed>] | plans <count> [<seed>] | race <seconds> [<seed>] | damage <count> [<seed>] | power <commands> [<seed>] | kills <count> [<seed>]");
    return 2;
}
var seed = args.Length == 3 ? int.Parse(args[2], CultureInfo.InvariantCulture) : Environment.TickCount & int.MaxValue;
Console.WriteLine($"seed {seed}");
var watch = Stopwatch.StartNew();
try
{
    using var world = new World();
    var summary = args[0] switch
    {
        "rounds" => new ModelRun(world, seed).Run(amount),
        "plans" => new ModelRun(world, seed, checksPlans: true).Run(amount),
        "race" => new RaceRun(world, seed).Run(TimeSpan.FromSeconds(amount)),
        "damage" => new DamageRun(world, seed).Run(amount),
        "power" => Interrupted(folder => new PowerRun(folder, seed).Run(amount)),
        "kills" => Interrupted(folder => new KillRun(folder, seed).Run(amount)),
        _ => throw new ArgumentException($"'{args[0]}' is not 'rounds', 'plans', 'race', 'damage', 'power' or 'kills'."),
    };
    Console.WriteLine($"{summary}, {watch.Elapsed.TotalSeconds.ToString("F0", CultureInfo.InvariantCulture)} s");
    return 0;
}
catch (BrokenPromiseException broken)
{
    Console.WriteLine(broken.Message);
    Console.WriteLine($"Repeat with: {args[0]} {amount} {seed}");
    return 1;
}

// In memory, if possible: what is on a disk follows from the record of the flushes.
static string Interrupted(Func<string, string> run)
{
    const string Memory = "/dev/shm";
    var root = Path.Combine(Directory.Exists(Memory) ? Memory : Path.GetTempPath(), $"tessaport-model-{Guid.NewGuid():N}");
    Directory.CreateDirectory(root);
    try
    {
        return run(root);
    }
    finally
    {
        Directory.Delete(root, recursive: true);
    }
}
