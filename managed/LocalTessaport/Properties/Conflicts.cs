namespace Quorvex.Tessaport.API.Local;

/// <summary>Which items are copies that were kept in a conflict.</summary>
internal static class Conflicts
{
    private const string Here = "here";
    private const string Server = "server";

    /// <summary>The path of the file of which an item is the other version; null if the item is not a conflict copy, or if that file is gone.</summary>
    public static string? OtherOf(LocalDrive drive, SyncedRecord? record) =>
        record?.Conflict is { } mark && mark.OtherOf(record.Path) is var other && ItemView.At(drive, other) is { Exists: true, IsFolder: false }
            ? other
            : null;

    /// <summary>The side from which a copy is, as one word; null for other items, and if it is not known.</summary>
    public static string? SideOf(PropertySource source) =>
        OtherOf(source.Drive, source.Synced) is null || source.Synced!.Conflict!.From is not { } side ? null
        : side == SideName.Workspace ? Here
        : Server;
}
