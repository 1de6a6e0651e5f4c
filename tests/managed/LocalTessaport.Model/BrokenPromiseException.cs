namespace Quorvex.Tessaport.API.Model;

/// <summary>A check failed; the message says which and lists the last steps.</summary>
internal sealed class BrokenPromiseException : Exception
{
    public BrokenPromiseException(string message) : base(message)
    {
    }
}
