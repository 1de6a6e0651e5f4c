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

    public static Dictionary<string, RequestFault> Parse(JsonElement root)
    {
        if (!root.TryGetProperty(Member, out var list))
            return None;
        var faults = new Dictionary<string, RequestFault>();
        foreach (var entry in Require(list, JsonValueKind.Object, $"'{Member}'", "an object").EnumerateObject())
        {
            if (!RequestNames.IsKnown(entry.Name))
                throw Invalid($"'{entry.Name}' in '{Member}' is not the name of a request");
            faults[entry.Name] = ParseFault(entry.Name, entry.Value);
        }
        return faults;
    }

    private static RequestFault ParseFault(string request, JsonElement element)
    {
        var delay = TimeSpan.Zero;
        string? message = null;
        string? kind = null;
        int? times = null;
        foreach (var member in Require(element, JsonValueKind.Object, $"the fault of '{request}'", "an object").EnumerateObject())
        {
            var what = $"'{member.Name}' of '{request}'";
            switch (member.Name)
            {
                case DelayMember:
                    delay = TimeSpan.FromMilliseconds(Number(member.Value, what, LongestDelay));
                    break;
                case FailureMember:
                    message = Require(member.Value, JsonValueKind.String, what, "a string").GetString();
                    break;
                case KindMember:
                    kind = Require(member.Value, JsonValueKind.String, what, "a string").GetString();
                    break;
                case TimesMember:
                    times = Number(member.Value, what, int.MaxValue);
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

    private static int Number(JsonElement element, string what, int most) =>
        element.ValueKind == JsonValueKind.Number && element.TryGetInt32(out var number) && number >= 1 && number <= most
            ? number
            : throw Invalid($"{what} is not a whole number from 1 to {most}");

    private static JsonElement Require(JsonElement element, JsonValueKind kind, string what, string expected) =>
        element.ValueKind == kind ? element : throw Invalid($"{what} is not {expected}");

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
