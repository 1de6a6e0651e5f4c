namespace Quorvex.Tessaport.API.Local;

/// <summary>Records in a format that this version of the service does not know.</summary>
internal sealed class UnknownVersionException(string message) : FormatException(message);
