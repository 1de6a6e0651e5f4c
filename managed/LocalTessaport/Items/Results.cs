namespace Quorvex.Tessaport.API.Local;

/// <summary>The outcomes for one key of a batch.</summary>
internal static class Results
{
    public const Result Success = Result.Success;
    public const Result NotFound = (Result)2;
    public const Result Offline = Result.Offline;
}
