namespace Quorvex.Tessaport.API.Local;

/// <summary>All commands, in the order of a menu.</summary>
internal static class CommandCatalog
{
    private static readonly ItemCommand[] All =
    [
        new("sync", "Sync", CommandActions.Sync)
        {
            IsEnabled = target => target.Views.All(view => !view.Drive.Offline),
            IsDefault = true,
        },
        new("copy-link", "Copy link", CommandActions.CopyLinks)
        {
            IsEnabled = target => target.Views.All(view => !view.Drive.Offline),
            BeginsGroup = true,
        },
        new("lock", "Lock", CommandActions.Lock)
        {
            IsOffered = CanBeLocked,
            IsEnabled = target => target.Views.All(FileLocks.CanLock) && !target.AreLocked(),
            IsChecked = target => target.AreLocked(),
            BeginsGroup = true,
        },
        new("unlock", "Unlock", CommandActions.Unlock)
        {
            IsOffered = CanBeLocked,
            IsEnabled = target => target.Views.All(FileLocks.CanLock) && target.AreAnyLocked(),
        },
        new("use-this-version", "Use this version", CommandActions.UseVersions)
        {
            IsOffered = target => target.AreConflictCopies(),
            IsEnabled = CanBeChanged,
            BeginsGroup = true,
        },
        new("discard-this-version", "Discard this version", CommandActions.DiscardVersions)
        {
            IsOffered = target => target.AreConflictCopies(),
            IsEnabled = CanBeChanged,
        },
        new("keep-both-versions", "Keep both versions", CommandActions.KeepBothVersions)
        {
            IsOffered = target => target.AreConflictCopies(),
            IsEnabled = target => target.Views.All(view => !view.Drive.Offline),
        },
    ];

    public static IEnumerable<ItemCommand> For(CommandTarget target) =>
        target.Views.Count == 0 ? [] : All.Where(command => command.IsOffered(target));

    public static ItemCommand? Find(string? id) => All.FirstOrDefault(command => command.Id == id);

    private static bool CanBeChanged(CommandTarget target) => target.Views.All(view => view.Drive.AcceptsChanges);

    private static bool CanBeLocked(CommandTarget target) => target.Views.All(view => view.Drive.Locking && !view.IsFolder);
}
