using System.Runtime.ExceptionServices;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Makes both sides of items equal, folders with everything in them. Never deletes anything.</summary>
internal sealed class ItemSync
{
    // A pass that finds nothing more to do proves that the one before it was complete. More are needed if files change
    // meanwhile, and after combinations of moves.
    private const int MostPasses = 6;

    private readonly DriveEdit _edit;
    private readonly ChangeReport _report;
    private readonly ISyncSteps _steps;

    public ItemSync(DriveEdit edit, ChangeReport report)
        : this(edit, report, new DriveSteps(edit))
    {
    }

    public ItemSync(DriveEdit edit, ChangeReport report, ISyncSteps steps)
    {
        _edit = edit;
        _report = report;
        _steps = steps;
    }

    /// <summary>Syncs the requested item, and lists it if all of it could be synced.</summary>
    public void SyncTree(string path)
    {
        RequireReachable(path);
        var (place, progress) = RunPasses(path);
        foreach (var (failed, reason) in progress.Failures)
            _report.Fail(_edit.Index, failed, reason);
        if (progress.Failures.Count == 0)
            _report.Updated(_steps.ViewAt(place));
    }

    /// <summary>Syncs one file; a failure is thrown.</summary>
    public void SyncFile(string path)
    {
        _edit.Drive.RequireOnline();
        var (_, progress) = RunPasses(path);
        foreach (var (failed, reason) in progress.Failures)
            _report.Fail(_edit.Index, failed, reason);
        if (progress.Failures.Count > 0)
            ExceptionDispatchInfo.Throw(progress.Failures.Values.First());
    }

    private void RequireReachable(string path)
    {
        _edit.Drive.RequireOnline();
        var view = _edit.At(path);
        if (!view.Exists && !view.IsRoot)
            throw new FileNotFoundException($"'{_edit.Drive.WorkspacePathOf(path)}' no longer exists.");
        LeftOut.RequireNot(view);
    }

    private (string Place, SyncProgress Last) RunPasses(string path)
    {
        _edit.Index.Failures.RemoveWithin(path);
        var place = path;
        for (var pass = 1; ; ++pass)
        {
            var progress = new SyncProgress();
            var seen = RunPass(path, place, progress);
            place = progress.PlaceOf(place);
            if (progress.MetChanges)
                _edit.ForgetSnapshot();
            if (progress is { DidWork: false, MetChanges: false })
                return (place, progress);
            if (pass == MostPasses)
            {
                if (progress.Failures.Count == 0)
                    progress.Fail(place, new IOException(
                        $"'{_edit.Drive.WorkspacePathOf(place)}' keeps changing while it is synced; sync it again when that is finished."));
                return (place, progress);
            }
            LargeGarbage.ReleaseAfter(seen);
        }
    }

    // Returns how many items it looked at. The requested item may have moved by now, and another item may be at its path.
    private int RunPass(string path, string place, SyncProgress progress)
    {
        var part = _steps.LookAt(path);
        if (part.IsEntireDrive)
            FollowMoves(part, progress, _ => true);
        else if (MoveFollower.IsDue(_edit.Index, part))
            FollowMoves(_steps.LookAtAll(), progress, candidate => IsAskedFor(candidate, path));
        if (!part.IsEntireDrive && progress.Moves.Count > 0)
            part = _steps.LookAt(path);
        new SyncPass(_edit, part, progress, _report, _steps).Run();
        if (progress.PlaceOf(place) is var now && now != path)
            new SyncPass(_edit, _steps.LookAt(now), progress, _report, _steps).Run();
        if (part.IsEntireDrive && progress is { DidWork: false, Failures.Count: 0 })
            _edit.ForgetWhatIsGone(part);
        return part.Count;
    }

    private void FollowMoves(DriveSnapshot drive, SyncProgress progress, Func<string, bool> isAskedFor)
    {
        new MoveFollower(_edit, drive, progress, _steps, isAskedFor).Run();
        foreach (var (from, to, isExchange) in progress.Moves)
        {
            _report.Updated(_steps.ViewAt(to), SyncActions.Renamed);
            if (isExchange)
                _report.Updated(_steps.ViewAt(from), SyncActions.Renamed);
        }
        if (progress.Moves.Count > 0)
            _edit.Tracker.Reset();
    }

    // A move of a folder that contains the requested item concerns it too.
    private static bool IsAskedFor(string candidate, string path) =>
        RelativePath.Comparer.Equals(candidate, path) || RelativePath.IsInside(candidate, path) || RelativePath.IsInside(path, candidate);
}
