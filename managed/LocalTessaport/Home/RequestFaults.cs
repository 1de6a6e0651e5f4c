using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads the faults of a home's state file. An entry that this version does not know is an error, not ignored.</summary>
internal static class RequestFaults
{
    public const string Member = "faults";
    public const string TimesMember = "times";
    public const string FailureMember = "failure";
    public const string KindMember = "kind";
    private const string DelayMember = "delayMilliseconds";

    // A longer one is a typing error, and longer than a thread may sleep at once.
    private const int LongestDelay = 24 * 60 * 60 * 1000;

    private static readonly Dictionary<string, RequestFault> None = [];

    public static Dictionary<string, RequestFault> Parse(JsonTree root)
    {
        if (root.Find(Member) is not { } list)
            return None;
        var faults = new Dictionary<string, RequestFault>();
        foreach (var (request, fault) in Require(list, JsonValueKind.Object, $"'{Member}'", "an object").Members)
        {
            if (!RequestNames.IsKnown(request))
                throw Invalid($"'{request}' in '{Member}' is not the name of a request");
            faults[request] = ParseFault(request, fault);
        }
        return faults;
    }

    private static RequestFault ParseFault(string request, JsonTree element)
    {
        var delay = TimeSpan.Zero;
        string? message = null;
        string? kind = null;
        int? times = null;
        foreach (var (name, value) in Require(element, JsonValueKind.Object, $"the fault of '{request}'", "an object").Members)
        {
            var what = $"'{name}' of '{request}'";
            switch (name)
            {
                case DelayMember:
                    delay = TimeSpan.FromMilliseconds(Number(value, what, LongestDelay));
                    break;
                case FailureMember:
                    message = Require(value, JsonValueKind.String, what, "a string").Text;
                    break;
                case KindMember:
                    kind = Require(value, JsonValueKind.String, what, "a string").Text;
                    break;
                case TimesMember:
                    times = Number(value, what, int.MaxValue);
                    break;
                default:
                    throw Invalid($"{what} is unknown");
            }
        }
        return new RequestFault(delay, ToFailure(request, message, kind, times));
    }

    private static RequestFailure? ToFailure(string request, string? message, string? kind, int? times)
    {
        if (kind is not null && !FailureKinds.IsKnown(kind))
            throw Invalid($"the '{KindMember}' '{kind}' of '{request}' is unknown");
        if (message is not null)
            return new RequestFailure(message, kind ?? FailureKinds.Error, times);
        return kind is null && times is null ? null : throw Invalid($"the fault of '{request}' has no '{FailureMember}'");
    }

    private static int Number(JsonTree element, string what, int most) =>
        element.Number is { } number && number >= 1 && number <= most
            ? number
            : throw Invalid($"{what} is not a whole number from 1 to {most}");

    private static JsonTree Require(JsonTree element, JsonValueKind kind, string what, string expected) =>
        element.Kind == kind ? element : throw Invalid($"{what} is not {expected}");

    private static InvalidFaultException Invalid(string reason) => new(reason);
}

/// <summary>The faults in the state file cannot be read; the message is the reason.</summary>
internal sealed class InvalidFaultException : Exception
{
    public InvalidFaultException(string reason)
        : base(reason)
    {
    }
}
