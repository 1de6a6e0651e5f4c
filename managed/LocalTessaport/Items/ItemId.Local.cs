namespace Quorvex.Tessaport.API;

public partial class ItemId
{
    /// <summary>Null in an id that this service did not make.</summary>
    internal string? Path { get; init; }

    internal Guid Drive { get; init; }

    /// <summary>What the request that returned this id did with the item; null for nothing.</summary>
    internal string? Action { get; init; }
}
