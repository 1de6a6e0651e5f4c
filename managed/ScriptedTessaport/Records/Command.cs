#nullable disable
using Quorvex.Tessaport.API.Scripted;

namespace Quorvex.Tessaport.API;

/// <summary>The contract's record, but the image can fail to be read.</summary>
public class Command
{
    internal static readonly Identities<Command> Known = new();

    private byte[] _image;

    internal int Number { get; init; }

    public string Name { get; set; }
    public string Id { get; set; }
    public bool IsEnabled { get; set; }
    public bool IsChecked { get; set; }
    public bool IsBeginningOfGroup { get; set; }
    public bool IsDefaultCommand { get; set; }

    public byte[] Image
    {
        get => ImageReads-- > 0 ? _image : throw ImageFailure();
        set => _image = value;
    }

    /// <summary>How many times the image can be read before it fails.</summary>
    internal long ImageReads { get; set; } = long.MaxValue;

    internal Func<Exception> ImageFailure { get; set; }

    internal static Command Numbered(int number) => Known.Get(number, () => new Command { Number = number });

    internal static Command Named(string name) => new() { Number = Names.NumberOf(name) };
}
