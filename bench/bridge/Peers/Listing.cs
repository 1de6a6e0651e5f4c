using Quorvex.Tessaport.API.Scripted;

namespace Velmora.Peers;

/// <summary>The items that every peer hands over, held ready.</summary>
internal static class Listing
{
    public static Item[] Items { get; private set; } = Array.Empty<Item>();

    public static void Make(int count) => Items = Enumerable.Range(0, count).Select(Generated.Item).ToArray();
}
