namespace Quorvex.Tessaport.API.Local;

/// <summary>How a request fails on purpose.</summary>
/// <param name="Message">The message of the exception.</param>
/// <param name="Kind">One of <see cref="FailureKinds"/>.</param>
/// <param name="Times">How many more requests fail; null for all of them.</param>
internal sealed record RequestFailure(string Message, string Kind, int? Times);

/// <summary>What a user set for a request, to try how a host handles it: a delay, a failure, or a failure after a delay.</summary>
internal sealed record RequestFault(TimeSpan Delay, RequestFailure? Failure);
