#nullable disable

namespace Quorvex.Tessaport.API;

public partial class Command
{
    public string Name { get; set; }
    public string Id { get; set; }
    public bool IsEnabled { get; set; }
    public bool IsChecked { get; set; }
    public bool IsBeginningOfGroup { get; set; }
    public bool IsDefaultCommand { get; set; }
    public byte[] Image { get; set; }
}

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
