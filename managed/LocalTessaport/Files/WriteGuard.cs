namespace Quorvex.Tessaport.API.Local;

/// <summary>Keeps other programs from writing to a file while it is replaced, as far as the system supports that.</summary>
internal abstract class WriteGuard : IDisposable
{
    /// <summary>Whether no other program has opened the file for writing.</summary>
    public abstract bool Holds { get; }

    public abstract void Dispose();
}
