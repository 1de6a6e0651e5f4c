namespace Quorvex.Tessaport.API.Local;

/// <summary>A folder in the place of one of the service's own that the service did not make for this user.</summary>
internal sealed class ForeignFolderException(string message) : IOException(message);
