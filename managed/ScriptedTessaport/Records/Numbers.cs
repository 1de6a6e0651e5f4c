using Quorvex.Tessaport.API.Scripted;

namespace Quorvex.Tessaport.API;

public partial class ItemId
{
    internal static readonly Identities<ItemId> Known = new();

    /// <summary>The number in the script, or that of its name; 0 for the ids of generated records.</summary>
    internal int Number { get; init; }

    internal static ItemId Numbered(int number) => Known.Get(number, () => new ItemId { Number = number });

    internal static ItemId Named(string name) => new() { Number = Names.NumberOf(name) };
}
