namespace Quorvex.Tessaport.API.Local;

/// <summary>Processes a list step by step; a step that fails does not prevent the others.</summary>
internal static class Batch
{
    /// <param name="request">The request.</param>
    /// <param name="elements">The list.</param>
    /// <param name="placeOf">The item that shows the reason of a failure.</param>
    /// <param name="step">What is done for each element.</param>
    public static CommandResult Run<T>(
        RequestScope request, List<T> elements, Func<T, DrivePlace?> placeOf, Action<ChangeScope, ChangeReport, T> step)
    {
        var report = new ChangeReport();
        using (var scope = new ChangeScope(request.Home))
        {
            foreach (var element in elements)
                report.Attempt(() => step(scope, report, element), reason => Note(scope, report, placeOf(element), reason));
            report.Attempt(scope.Save);
        }
        var (result, count) = (report.ToResult(), report.Count);
        // The records take as much memory as a long result, which is read next. Whoever needs them later reads them from the disk.
        if (LargeGarbage.IsLeftBy(count))
            IndexStore.ForgetAll();
        LargeGarbage.ReleaseAfter(count);
        return result;
    }

    private static void Note(ChangeScope scope, ChangeReport report, DrivePlace? place, Exception reason)
    {
        if (place is { } known)
            report.Attempt(() => scope.Edit(known.Drive).Index.Failures.Put(known.Path, reason.Message));
    }
}
