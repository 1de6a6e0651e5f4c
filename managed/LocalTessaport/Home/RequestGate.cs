using System.Diagnostics;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Lets a request begin, unless the state of the service or a fault that a user set prevents it.</summary>
internal static class RequestGate
{
    // Short enough for a user who clears a delay not to notice, and rare enough to cost nothing.
    private static readonly TimeSpan LongestPause = TimeSpan.FromMilliseconds(50);

    /// <summary>Waits as long as the fault says, without any lock, and throws its failure.</summary>
    /// <param name="home">The home.</param>
    /// <param name="method">The method of the service.</param>
    public static void Pass(HomeFolder home, string method)
    {
        var request = RequestNames.Of(method);
        if (FaultAfterDelay(home, request)?.Failure is not { } failure)
            return;
        if (failure.Times is not null)
            failure = FailureCount.TryTake(home, request);
        if (failure is not null)
            throw failure.ToException();
    }

    // The file is read again during the delay, so that a change or the end of the fault counts at once.
    private static RequestFault? FaultAfterDelay(HomeFolder home, string request)
    {
        var waited = Stopwatch.StartNew();
        for (; ; )
        {
            var file = ServiceFile.Read(home);
            ServiceState.RequireRunning(home, file.State);
            var fault = file.Faults.GetValueOrDefault(request);
            var rest = (fault?.Delay ?? TimeSpan.Zero) - waited.Elapsed;
            if (rest <= TimeSpan.Zero)
                return fault;
            Thread.Sleep(rest < LongestPause ? rest : LongestPause);
        }
    }
}
