namespace Quorvex.Tessaport.API.Local;

/// <summary>The numbers of the data types.</summary>
internal static class PropertyTypes
{
    public const PropertyDataType String = (PropertyDataType)1;
    public const PropertyDataType WholeNumber = (PropertyDataType)2;
    public const PropertyDataType Date = (PropertyDataType)3;
    public const PropertyDataType Boolean = (PropertyDataType)4;
}
