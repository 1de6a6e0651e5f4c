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
