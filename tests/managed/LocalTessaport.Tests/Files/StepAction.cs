namespace Quorvex.Tessaport.API.Tests;

/// <summary>Acts once, when the service comes to a step; disposing it checks that it did.</summary>
internal sealed class StepAction : IDisposable
{
    private readonly string _step;
    private readonly Action<string> _action;
    private readonly string _within;
    private int _calls;
    private Exception? _failure;

    private StepAction(string step, string within, Action<string> action)
    {
        _step = step;
        _within = within;
        _action = action;
        Step.Hook = Reached;
    }

    /// <summary>Whether the step was reached; throws if the action failed then.</summary>
    public bool WasReached
    {
        get
        {
            if (_failure is not null)
                throw new InvalidOperationException($"What was to happen at '{_step}' failed: {_failure.Message}", _failure);
            return _calls > 0;
        }
    }

    /// <summary>Acts the first time the step is reached for a path with the given ending.</summary>
    public static StepAction At(string step, string pathEnd, Action<string> action) => new(step, pathEnd, action);

    public void Dispose() => Step.Hook = null;

    private void Reached(string step, string path)
    {
        if (step != _step || !path.EndsWith(_within, StringComparison.Ordinal) || _calls++ > 0)
            return;
        try
        {
            _action(path);
        }
        catch (Exception e)
        {
            _failure = e;
            throw;
        }
    }
}
