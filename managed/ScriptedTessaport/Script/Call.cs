namespace Quorvex.Tessaport.API.Scripted;

/// <summary>A call and its arguments. It refers to objects by number or name, so that the record of a call keeps nothing alive.</summary>
internal sealed class Call
{
    public Call(string member, int service = 0)
    {
        Member = member;
        Service = service;
    }

    public string Member { get; }

    /// <summary>The number of the service object, counted from 1.</summary>
    public int Service { get; }

    public List<KeyValuePair<string, object?>> Arguments { get; } = new();

    public Call With(string name, object? value)
    {
        Arguments.Add(new(name, value));
        return this;
    }

    public Call With(string name, ItemId? id) => With(name, Label(id?.Number));

    public Call With(string name, Command? command) => With(name, Label(command?.Number));

    public Call With(string name, List<ItemId?>? ids) => With(name, (object?)ids?.Select(id => Label(id?.Number)).ToList());

    public Call With(CommandContext? context) => context == null
        ? With("context", (object?)null)
        : With("window", (object?)(long)context.Window).With("item", context.Item).With("items", context.Items!);

    private static object? Label(int? number) => number is int known ? Names.NameOrNumber(known) : null;
}
