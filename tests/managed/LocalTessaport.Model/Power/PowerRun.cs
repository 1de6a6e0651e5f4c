namespace Quorvex.Tessaport.API.Model;

/// <summary>
/// Commands of the tool, and what a power failure at each of their changes may leave. The service must make both sides equal again from
/// each such state, without the loss of a version.
/// </summary>
internal sealed class PowerRun
{
    private readonly Random _random;
    private readonly string _root;
    private int _moments;
    private int _images;

    public PowerRun(string root, int seed)
    {
        _root = root;
        _random = new Random(seed);
    }

    public string Run(int commands)
    {
        for (var number = 1; number <= commands; ++number)
        {
            using var scenario = new ToolScenario(_random, Path.Combine(_root, $"power-{number}"));
            try
            {
                Interrupt(scenario);
            }
            catch (Exception e) when (e is not OutOfMemoryException)
            {
                throw new BrokenPromiseException($"Command {number}: {(e is BrokenPromiseException ? e.Message : e.ToString())}\n{scenario.Describe()}");
            }
        }
        return $"{commands} commands, {_moments} moments, {_images} states after a power failure";
    }

    private void Interrupt(ToolScenario scenario)
    {
        var log = new DiskLog(scenario.Home, scenario.Unflushed, () =>
            ToolProcess.Record(scenario.Home, scenario.Command, scenario.SuccessCodes, Path.Combine(scenario.Root, "changes")));
        RequireComplete(log, scenario.Home);
        scenario.KeepNumbers();
        var images = new CrashImages(log, _random);
        for (var moment = 0; moment <= log.Count; ++moment)
        {
            ++_moments;
            foreach (var image in images.Before(moment).Where(images.IsNew))
            {
                ++_images;
                var recovery = new Recovery(scenario, image, Path.Combine(scenario.Root, $"crash-{_images}"));
                try
                {
                    recovery.Require(moment == log.Count ? scenario.OwedAtEnd : scenario.Owed, moment == log.Count);
                }
                catch (Exception e) when (e is not OutOfMemoryException)
                {
                    throw new BrokenPromiseException(
                        $"{(e is BrokenPromiseException ? e.Message : e.ToString())}\nThe power failed after\n{string.Join('\n', log.Changes.Take(moment))}\nand left\n{recovery.Describe()}");
                }
            }
        }
    }

    // Otherwise the library overlooks a call, and the states are not those that can be.
    private static void RequireComplete(DiskLog log, string home)
    {
        var expected = DiskLog.Walk(log.NamesAfter(log.NameChanges.ToHashSet()))
            .Select(item => (item.Path, Content: log.Nodes[item.Node].IsFolder ? "/" : Convert.ToBase64String(log.Nodes[item.Node].ContentBefore(int.MaxValue))))
            .Order();
        var found = Directory.EnumerateFileSystemEntries(home, "*", SearchOption.AllDirectories)
            .Select(path => (Path: Path.GetRelativePath(home, path), Content: Directory.Exists(path) ? "/" : Convert.ToBase64String(File.ReadAllBytes(path))))
            .Order();
        if (expected.Except(found).Concat(found.Except(expected)).FirstOrDefault() is { Path: not null } other)
            throw new BrokenPromiseException($"The record does not lead to what the command left: '{other.Path}' differs.");
    }
}
