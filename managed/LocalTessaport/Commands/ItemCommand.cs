namespace Quorvex.Tessaport.API.Local;

/// <summary>A command: its name, when it is offered, and what it does.</summary>
internal sealed record ItemCommand(string Id, string Name, Func<CommandTarget, CommandResult> Run)
{
    public Predicate<CommandTarget> IsOffered { get; init; } = _ => true;
    public Predicate<CommandTarget> IsEnabled { get; init; } = _ => true;
    public Predicate<CommandTarget> IsChecked { get; init; } = _ => false;
    public bool BeginsGroup { get; init; }
    public bool IsDefault { get; init; }

    public Command Describe(CommandTarget target) => new()
    {
        Id = Id,
        Name = Name,
        IsEnabled = IsEnabled(target),
        IsChecked = IsChecked(target),
        IsBeginningOfGroup = BeginsGroup,
        IsDefaultCommand = IsDefault,
        Image = ReadImage(),
    };

    private byte[] ReadImage()
    {
        using var stream = typeof(ItemCommand).Assembly.GetManifestResourceStream(Id + ".png")!;
        using var bytes = new MemoryStream();
        stream.CopyTo(bytes);
        return bytes.ToArray();
    }
}
