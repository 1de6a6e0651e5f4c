namespace Quorvex.Tessaport.API.Local;

/// <summary>What a sync did with an item, as one word that programs can read.</summary>
internal static class SyncActions
{
    public const string Uploaded = "uploaded";
    public const string Downloaded = "downloaded";
    public const string Renamed = "renamed";

    /// <summary>The word for copying from a side to the other.</summary>
    public static string From(SideName side) => side == SideName.Workspace ? Uploaded : Downloaded;
}
