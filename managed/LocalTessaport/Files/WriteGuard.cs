using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Keeps a file from being written by other programs while it is replaced, as far as the system can do that.</summary>
internal abstract class WriteGuard : IDisposable
{
    /// <summary>Whether no other program has begun to write to the file.</summary>
    public abstract bool Holds { get; }

    public abstract void Dispose();
}
