namespace Quorvex.Tessaport.API
{
    public class TessaportRequiresUpdateException : Exception
    {
        public TessaportRequiresUpdateException(string message) : base(message) { }
    }

    // Fits two rows of the bridge's exception table, so that a test can observe their order.
    public class TessaportApiRequiresUpdateException : TessaportRequiresUpdateException
    {
        public TessaportApiRequiresUpdateException(string message) : base(message) { }
    }

    public class TessaportForcedUpdateException : Exception
    {
        public TessaportForcedUpdateException(string message) : base(message) { }
    }

    public class TessaportNotRunningException : Exception
    {
        public TessaportNotRunningException(string message) : base(message) { }
    }

    public class TessaportNotInstalledException : Exception
    {
        public TessaportNotInstalledException(string message) : base(message) { }
    }
}

namespace Quorvex.Tessaport.API.Scripted
{
    public class DerivedApiRequiresUpdateException : TessaportApiRequiresUpdateException
    {
        public DerivedApiRequiresUpdateException(string message) : base(message) { }
    }

    public class DerivedForcedUpdateException : TessaportForcedUpdateException
    {
        public DerivedForcedUpdateException(string message) : base(message) { }
    }

    public class DerivedNotRunningException : TessaportNotRunningException
    {
        public DerivedNotRunningException(string message) : base(message) { }
    }

    public class DerivedNotInstalledException : TessaportNotInstalledException
    {
        public DerivedNotInstalledException(string message) : base(message) { }
    }

    public class DerivedRequiresUpdateException : TessaportRequiresUpdateException
    {
        public DerivedRequiresUpdateException(string message) : base(message) { }
    }

    /// <summary>Throws when its message is read.</summary>
    public class UnreadableMessageException : TessaportNotRunningException
    {
        public UnreadableMessageException(string message) : base(message) { }
        public override string Message => throw new InvalidOperationException("The message cannot be read.");
    }

    public class NullMessageException : TessaportForcedUpdateException
    {
        public NullMessageException(string message) : base(message) { }
        public override string Message => null!;
    }
}
