using System;

namespace Quorvex.Tessaport.API;

public partial class ItemId
{
    /// <summary>Null in an id that was not made by this service.</summary>
    internal string? Path { get; init; }

    internal Guid Drive { get; init; }
}
