using System.Runtime.CompilerServices;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>A test about something that only Unix file systems have; it is skipped on other systems.</summary>
public sealed class UnixFactAttribute : FactAttribute
{
    public UnixFactAttribute(
        [CallerFilePath] string? sourceFilePath = null, [CallerLineNumber] int sourceLineNumber = -1)
        : base(sourceFilePath, sourceLineNumber)
    {
        if (OperatingSystem.IsWindows())
            Skip = "Windows has no such files.";
    }
}
