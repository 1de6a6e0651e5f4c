#nullable disable

namespace Quorvex.Tessaport.API;

public partial class TessaportApiRequiresUpdateException : Exception
{
    public TessaportApiRequiresUpdateException(string message) : base(message) { }
}

public partial class TessaportForcedUpdateException : Exception
{
    public TessaportForcedUpdateException(string message) : base(message) { }
}

public partial class TessaportNotRunningException : Exception
{
    public TessaportNotRunningException(string message) : base(message) { }
}

public partial class TessaportNotInstalledException : Exception
{
    public TessaportNotInstalledException(string message) : base(message) { }
}

public partial class TessaportRequiresUpdateException : Exception
{
    public TessaportRequiresUpdateException(string message) : base(message) { }
}
