#nullable disable

namespace Quorvex.Tessaport.API;

public partial class CommandContext
{
    public CommandContext(IntPtr window, ItemId item, List<ItemId> items)
    {
        Window = window;
        Item = item;
        Items = items;
    }

    internal IntPtr Window { get; }
    internal ItemId Item { get; }
    internal List<ItemId> Items { get; }
}

public partial class CommandResult
{
    public bool IsSuccess { get; set; }
    public IEnumerable<Item> ItemsCreated { get; set; }
    public IEnumerable<Item> ItemsDeleted { get; set; }
    public IEnumerable<Item> ItemsUpdated { get; set; }
}
