using System.Globalization;

namespace Vendor.Parts;

/// <summary>What the vendor's assembly needs from another assembly of its folder.</summary>
public static class Catalog
{
    public static string DriveName => "Projects";

    /// <summary>Contains a number in German notation, if the runtime has that culture.</summary>
    public static string LocalizedName => "Edition " + 1.5.ToString(new CultureInfo("de-DE"));
}
