namespace Velmora.Bridge.Loading;

/// <summary>The bridge cannot start in this process. The message says what was looked for, where, and what to do.</summary>
internal sealed class LoadingException : Exception
{
    public LoadingException(string message) : base(message)
    {
    }
}
