namespace Quorvex.Tessaport.API.Local;

/// <summary>The kinds of cloud storage that a drive can represent.</summary>
internal static class DriveTypes
{
    public const string Quorvex = "Quorvex.DataSourceType.Drive";
    public const string TrelisDocs = "Quorvex.DataSourceType.TrelisDocs";
    public const string TrelisTeam = "Quorvex.DataSourceType.TrelisTeam";
    public const string Morrow = "Quorvex.DataSourceType.Morrow";

    public static readonly string[] All = [Quorvex, TrelisDocs, TrelisTeam, Morrow];

    public static bool IsKnown(string type) => Array.IndexOf(All, type) >= 0;
}
