using System.Globalization;

namespace Vendor.Parts;

/// <summary>What the vendor's assembly needs of another one of its folder.</summary>
public static class Catalog
{
    public static string DriveName => "Projects";

    /// <summary>A number as Germans write it, where the runtime knows how they do.</summary>
    public static string LocalizedName => "Edition " + 1.5.ToString(new CultureInfo("de-DE"));
}
