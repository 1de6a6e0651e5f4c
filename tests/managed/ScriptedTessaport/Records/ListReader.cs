using System;
using System.Collections.Generic;
using System.Linq;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Lists as a script writes them: null, an array, {"generate": count}, or {"list": array, "failsIn": place, "after":
/// count, "throw": exception}, which is enumerated lazily and fails on the way. Everything but the last is ready before
/// the request comes.
/// </summary>
internal static class ListReader
{
    public static IEnumerable<T?>? Read<T>(JsonElement json, Func<JsonElement, T?> read, Func<int, T> generate) where T : class
    {
        if (json.ValueKind == JsonValueKind.Null)
            return null;
        if (json.ValueKind == JsonValueKind.Array)
            return json.EnumerateArray().Select(read).ToList();
        if (json.TryGetProperty("generate", out JsonElement count))
            return Enumerable.Range(0, count.GetInt32()).Select(generate).ToList();
        return new FailingList<T?>(
            json.GetProperty("list").EnumerateArray().Select(read).ToList(), FailingPlace(json), FailingAfter(json),
            Failures.Read(json.GetProperty("throw")));
    }

    private static ListStep FailingPlace(JsonElement json) =>
        json.TryGetProperty("failsIn", out JsonElement place) ? Enum.Parse<ListStep>(place.GetString()!) : ListStep.MoveNext;

    private static int FailingAfter(JsonElement json) =>
        json.TryGetProperty("after", out JsonElement count) ? count.GetInt32() : 0;
}
