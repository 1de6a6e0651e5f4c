using System.Globalization;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// A time as the value of a property. Its string is the same in every culture, because callers receive values as strings.
/// </summary>
internal readonly record struct UtcTime(DateTime Value)
{
    /// <summary>RFC 3339, in UTC and without fractions of a second.</summary>
    public override string ToString() => Value.ToString("yyyy-MM-dd'T'HH:mm:ss'Z'", CultureInfo.InvariantCulture);
}
