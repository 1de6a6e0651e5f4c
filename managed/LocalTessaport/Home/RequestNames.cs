using System.Reflection;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>What the state file calls the requests: the names of their methods with a lower-case first letter.</summary>
internal static class RequestNames
{
    private static readonly Lazy<HashSet<string>> All = new(() => typeof(TessaportService)
        .GetMethods(BindingFlags.Public | BindingFlags.Instance | BindingFlags.DeclaredOnly)
        .Select(method => Of(method.Name))
        .ToHashSet());

    public static string Of(string method) => JsonNamingPolicy.CamelCase.ConvertName(method);

    public static bool IsKnown(string name) => All.Value.Contains(name);
}
