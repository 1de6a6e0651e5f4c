namespace Quorvex.Tessaport.API;

public partial class ItemId
{
    /// <summary>Null in an id that was not made by this service.</summary>
    internal string? Path { get; init; }

    internal Guid Drive { get; init; }

    /// <summary>What the request did with the item in whose result this id is; null if it did nothing with it.</summary>
    internal string? Action { get; init; }
}
