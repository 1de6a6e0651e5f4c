#nullable disable

namespace Quorvex.Tessaport.API;

public partial class Drive
{
    public Guid Id { get; set; }
    public string Name { get; set; }
    public string WorkspaceLocation { get; set; }
    public string DriveType { get; set; }
    public Item Root { get; set; }
    public DriveCapabilites DriveCapabilites { get; set; }
}

public partial class DriveCapabilites
{
    public bool Locking { get; set; }
}
