using System.Globalization;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>Property values of any type: those of JSON, and {"type": …, "value": …} for the others.</summary>
internal static class Values
{
    private sealed class Unprintable
    {
        public override string ToString() => throw new InvalidOperationException("The value has no text.");
    }

    private sealed class Textless
    {
        public override string? ToString() => null;
    }

    /// <summary>A value that does something when its text is asked for.</summary>
    public sealed class WithSideEffect
    {
        private readonly Action _effect;

        public WithSideEffect(Action effect) => _effect = effect;

        public override string ToString()
        {
            _effect();
            return "done";
        }
    }

    public static object? Read(JsonElement json) => json.ValueKind switch
    {
        JsonValueKind.Number => json.GetInt32(),
        JsonValueKind.True => true,
        JsonValueKind.False => false,
        JsonValueKind.Object => Typed(json.GetProperty("type").GetString()!, json),
        _ => Strings.Read(json),
    };

    private static object Typed(string type, JsonElement json) => type switch
    {
        "double" => json.GetProperty("value").GetDouble(),
        "long" => json.GetProperty("value").GetInt64(),
        "decimal" => decimal.Parse(json.GetProperty("value").GetString()!, CultureInfo.InvariantCulture),
        "date" => RecordReader.Date(json.GetProperty("value")),
        "guid" => json.GetProperty("value").GetGuid(),
        "enum" => (DayOfWeek)json.GetProperty("value").GetInt32(),
        "array" => new[] { 1, 2 },
        "unprintable" => new Unprintable(),
        "textless" => new Textless(),
        _ => throw new FormatException($"'{type}' is not a type of property values that the script knows."),
    };
}
