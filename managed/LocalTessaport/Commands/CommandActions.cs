using System.Text;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What the commands do.</summary>
internal static class CommandActions
{
    private const string LinkPrefix = "tessaport://";

    public static CommandResult Sync(CommandTarget target) => Batch.Run(target.Request, target.Views, PlaceOf, (scope, report, view) =>
        new ItemSync(scope.Edit(view.Drive), report).SyncTree(view.Path));

    public static CommandResult Lock(CommandTarget target) => ChangeLocks(target, FileLocks.Lock);

    public static CommandResult Unlock(CommandTarget target) => ChangeLocks(target, FileLocks.Unlock);

    public static CommandResult UseVersions(CommandTarget target) => Settle(target, ConflictSettlement.Use);

    public static CommandResult DiscardVersions(CommandTarget target) => Settle(target, ConflictSettlement.Discard);

    public static CommandResult KeepBothVersions(CommandTarget target) => Settle(target, ConflictSettlement.KeepBoth);

    /// <summary>The links go to a file of the home, since a service has no clipboard of its own.</summary>
    public static CommandResult CopyLinks(CommandTarget target)
    {
        var report = new ChangeReport();
        report.Attempt(() =>
        {
            var links = PermanentIds.Of(target.Request, target.Views).Select(id => LinkPrefix + id + "\n");
            var text = Encoding.UTF8.GetBytes(string.Concat(links));
            using var held = HomeLock.Acquire(target.Request.Home);
            AtomicFile.Write(target.Request.Home, target.Request.Home.ClipboardFile, stream => stream.Write(text));
        });
        return report.ToResult();
    }

    private static DrivePlace? PlaceOf(ItemView view) => new(view.Drive, view.Path);

    private static CommandResult Settle(CommandTarget target, Action<DriveEdit, ChangeReport, string> settle) =>
        Batch.Run(target.Request, target.Views, PlaceOf, (scope, report, view) => settle(scope.Edit(view.Drive), report, view.Path));

    private static CommandResult ChangeLocks(CommandTarget target, Action<DriveEdit, ItemView> change) =>
        Batch.Run(target.Request, target.Views, PlaceOf, (scope, report, view) =>
        {
            change(scope.Edit(view.Drive), view);
            report.Updated(view);
        });
}
