namespace Quorvex.Tessaport.API.Local;

/// <summary>A name in a folder and what it is. A class, because the runtime has the code of lists of objects in advance.</summary>
internal sealed record NamedEntry(string Name, FileEntry Entry);
