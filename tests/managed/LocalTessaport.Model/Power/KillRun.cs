namespace Quorvex.Tessaport.API.Model;

/// <summary>
/// Commands of the tool that are killed at one of their changes, chosen at random: no version may be lost, no file may be incomplete, and the
/// same command must work afterwards.
/// </summary>
internal sealed class KillRun
{
    private const int FirstGuess = 30;
    private const int RetriesOneIn = 4;

    private readonly Random _random;
    private readonly string _root;

    // How many changes a command makes, as far as it is known.
    private readonly Dictionary<string, int> _changes = [];
    private int _killed;
    private int _ended;
    private int _repeated;

    public KillRun(string root, int seed)
    {
        _root = root;
        _random = new Random(seed);
    }

    public string Run(int kills)
    {
        while (_killed < kills)
        {
            using var scenario = new ToolScenario(_random, Path.Combine(_root, $"kill-{_killed + _ended}"));
            var change = _random.Next(_changes.GetValueOrDefault(scenario.Kind, FirstGuess)) + 1;
            try
            {
                Interrupt(scenario, change);
            }
            catch (Exception e) when (e is not OutOfMemoryException)
            {
                throw new BrokenPromiseException(
                    $"Kill {_killed}, at change {change}: {(e is BrokenPromiseException ? e.Message : e.ToString())}\n{scenario.Describe()}");
            }
        }
        var kinds = string.Join(", ", _changes.Select(kind => $"{kind.Key} {kind.Value}").Order(StringComparer.Ordinal));
        return $"{_killed} kills, {_ended} commands that ended before, {_repeated} that were repeated (changes at most: {kinds})";
    }

    private void Interrupt(ToolScenario scenario, int change)
    {
        var isKilled = ToolProcess.Kill(scenario.Home, scenario.Command, scenario.SuccessCodes, change);
        ++(isKilled ? ref _killed : ref _ended);
        Learn(scenario.Kind, change, isKilled);
        Aftermath.RequireComplete(Aftermath.FilesOfUsers(scenario.Home), new HashSet<string>());
        // Before the sync, since that would do the work of the command.
        if (isKilled && _random.Next(RetriesOneIn) == 0)
        {
            ++_repeated;
            ToolProcess.Require(scenario.Home, scenario.Command, scenario.SuccessCodesOfRepetition);
        }
        Aftermath.Require(scenario.Home, isKilled ? scenario.Owed : scenario.OwedAtEnd, new HashSet<string>());
    }

    private void Learn(string kind, int change, bool isKilled)
    {
        var known = _changes.GetValueOrDefault(kind, FirstGuess);
        // A little more than what the longest makes, so that each of its changes is reached.
        _changes[kind] = isKilled ? Math.Max(known, change + 4) : known;
    }
}
