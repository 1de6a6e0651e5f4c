namespace Quorvex.Tessaport.API.Local;

/// <summary>What a sync did with an item, as one word that programs can read.</summary>
internal static class SyncActions
{
    public const string Uploaded = "uploaded";
    public const string Downloaded = "downloaded";
    public const string Renamed = "renamed";

    /// <summary>Only in a plan: in a result, the copy is listed as created.</summary>
    public const string KeptTwice = "kept-twice";

    /// <summary>The word for copying from a side to the other.</summary>
    public static string From(SideName side) => side == SideName.Workspace ? Uploaded : Downloaded;
}
