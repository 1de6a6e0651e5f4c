namespace Quorvex.Tessaport.API.Local;

/// <summary>Does one step for each of many things; a failing one does not keep the others from being done.</summary>
internal static class Batch
{
    /// <param name="request">The request.</param>
    /// <param name="things">What the step is done for.</param>
    /// <param name="placeOf">The item that shows the reason when the step fails.</param>
    /// <param name="step">The step.</param>
    public static CommandResult Run<T>(
        RequestScope request, List<T> things, Func<T, DrivePlace?> placeOf, Action<ChangeScope, ChangeReport, T> step)
    {
        var report = new ChangeReport();
        using (var scope = new ChangeScope(request.Home))
        {
            foreach (var thing in things)
                report.Attempt(() => step(scope, report, thing), reason => Note(scope, report, placeOf(thing), reason));
            report.Attempt(scope.Save);
        }
        return report.ToResult();
    }

    private static void Note(ChangeScope scope, ChangeReport report, DrivePlace? place, Exception reason)
    {
        if (place is { } known)
            report.Attempt(() => scope.Edit(known.Drive).Index.Failures.Put(known.Path, reason.Message));
    }
}
