namespace Quorvex.Tessaport.API.Local;

/// <summary>The exceptions that a request can be made to throw: any error, or the exception of a state.</summary>
internal static class FailureKinds
{
    public const string Error = "error";

    private static readonly Dictionary<string, Func<string, Exception>> Exceptions = new()
    {
        [Error] = message => new IOException(message),
        ["not-installed"] = message => new TessaportNotInstalledException(message),
        ["not-running"] = message => new TessaportNotRunningException(message),
        ["requires-update"] = message => new TessaportRequiresUpdateException(message),
        ["forced-update"] = message => new TessaportForcedUpdateException(message),
        ["api-requires-update"] = message => new TessaportApiRequiresUpdateException(message),
    };

    public static bool IsKnown(string kind) => Exceptions.ContainsKey(kind);

    public static Exception ToException(this RequestFailure failure) => Exceptions[failure.Kind](failure.Message);
}
