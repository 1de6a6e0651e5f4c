namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Lists as a script writes them: null, an array, {"generate": count}, {"list": array, "as": kind} for a collection of
/// another kind (see ListOfKind), "endless" for one that goes on until the script is reset, or {"list": array,
/// "failsIn": place, "after": count, "throw": exception}, which is enumerated lazily and fails on the way. Everything but
/// the last two is ready before the request comes.
/// </summary>
internal static class ListReader
{
    public static IEnumerable<T?>? Read<T>(JsonElement json, Func<JsonElement, T?> read, Func<int, T> generate) where T : class
    {
        if (json.ValueKind == JsonValueKind.Null)
            return null;
        if (json.ValueKind == JsonValueKind.Array)
            return json.EnumerateArray().Select(read).ToList();
        if (json.ValueKind == JsonValueKind.String && json.GetString() == "endless")
            return EndlessLists.Of(generate);
        if (json.TryGetProperty("generate", out JsonElement count))
            return Enumerable.Range(0, count.GetInt32()).Select(generate).ToList();
        List<T?> list = json.GetProperty("list").EnumerateArray().Select(read).ToList();
        if (json.TryGetProperty("as", out JsonElement kind))
            return ListOfKind(kind.GetString()!, list);
        return new FailingList<T?>(
            list, FailingPlace(json), FailingAfter(json), Failures.Read(json.GetProperty("throw")));
    }

    private static IEnumerable<T?> ListOfKind<T>(string kind, List<T?> list) where T : class => kind switch
    {
        "array" => list.ToArray(),
        "enumerable-only" => new EnumerableOnly<T?>(list),
        "reversing" => new ReversingList<T?>(list),
        "growing" => Growing(list),
        _ => throw new FormatException($"'{kind}' is not a kind of list that the script knows."),
    };

    // Adds an element to itself as soon as the text of its first value is asked for, which is during its enumeration.
    private static List<T> Growing<T>(List<T> list)
    {
        ((PropertyValue)(object)list[0]!).Value = new Values.WithSideEffect(() => list.Add(list[0]));
        return list;
    }

    private static ListStep FailingPlace(JsonElement json) =>
        json.TryGetProperty("failsIn", out JsonElement place) ? Enum.Parse<ListStep>(place.GetString()!) : ListStep.MoveNext;

    private static int FailingAfter(JsonElement json) =>
        json.TryGetProperty("after", out JsonElement count) ? count.GetInt32() : 0;
}
