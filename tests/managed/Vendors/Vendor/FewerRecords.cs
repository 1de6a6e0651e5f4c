#nullable disable
// Some records as they are in the variants that lack a part of them.

namespace Quorvex.Tessaport.API;

#if LACKS_PROPERTY
public partial class Drive
{
    public Guid Id { get; set; }
    public string Name { get; set; }
    public string DriveType { get; set; }
    public Item Root { get; set; }
    public DriveCapabilites DriveCapabilites { get; set; }
}

public partial class DriveCapabilites
{
    public bool Locking { get; set; }
}
#endif

#if LACKS_EXCEPTION
public partial class TessaportNotRunningException : Exception
{
    public TessaportNotRunningException(string message) : base(message) { }
}

public partial class TessaportRequiresUpdateException : Exception
{
    public TessaportRequiresUpdateException(string message) : base(message) { }
}
#endif
