using System;

namespace Velmora.Bridge.Loading;

/// <summary>The bridge cannot serve this process; the message says what was looked for, where, and what to do.</summary>
internal sealed class LoadingException : Exception
{
    public LoadingException(string message) : base(message)
    {
    }
}
