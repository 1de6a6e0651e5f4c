using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>A value of a JSON text with all that is in it.</summary>
/// <remarks>
/// JsonDocument would do the same. Some of its code is compiled when it is first used, and more assemblies are loaded for it, which
/// takes 3 ms of the 40 of a program that asks for one thing.
/// </remarks>
internal sealed class JsonTree
{
    private static readonly List<JsonTree> NoElements = [];
    private static readonly List<KeyValuePair<string, JsonTree>> NoMembers = [];

    private JsonTree(JsonValueKind kind) => Kind = kind;

    public JsonValueKind Kind { get; }

    /// <summary>The elements of an array; none for anything else.</summary>
    public List<JsonTree> Elements { get; private init; } = NoElements;

    /// <summary>The members of an object in their order, with those that appear twice; none for anything else.</summary>
    public List<KeyValuePair<string, JsonTree>> Members { get; private init; } = NoMembers;

    /// <summary>The value of a string; null for anything else.</summary>
    public string? Text { get; private init; }

    /// <summary>The value of a number that is an integer of 32 bits; null for anything else.</summary>
    public int? Number { get; private init; }

    /// <exception cref="JsonException">The text is not JSON.</exception>
    /// <exception cref="InvalidOperationException">A string has half of a surrogate pair.</exception>
    public static JsonTree Parse(ReadOnlySpan<byte> utf8)
    {
        var reader = new Utf8JsonReader(utf8);
        reader.Read();
        var root = ParseValue(ref reader);
        // Anything but the end is an error.
        reader.Read();
        return root;
    }

    /// <summary>The value of a member, of the last one if several have the name; null if none has it.</summary>
    public JsonTree? Find(string name)
    {
        for (var i = Members.Count - 1; i >= 0; --i)
        {
            if (Members[i].Key == name)
                return Members[i].Value;
        }
        return null;
    }

    // The reader limits the depth.
    private static JsonTree ParseValue(ref Utf8JsonReader reader) => reader.TokenType switch
    {
        JsonTokenType.StartObject => new(JsonValueKind.Object) { Members = ParseMembers(ref reader) },
        JsonTokenType.StartArray => new(JsonValueKind.Array) { Elements = ParseElements(ref reader) },
        JsonTokenType.String => new(JsonValueKind.String) { Text = reader.GetString() },
        JsonTokenType.Number => new(JsonValueKind.Number) { Number = reader.TryGetInt32(out var number) ? number : null },
        JsonTokenType.True => new(JsonValueKind.True),
        JsonTokenType.False => new(JsonValueKind.False),
        _ => new(JsonValueKind.Null),
    };

    private static List<KeyValuePair<string, JsonTree>> ParseMembers(ref Utf8JsonReader reader)
    {
        var members = new List<KeyValuePair<string, JsonTree>>();
        while (reader.Read() && reader.TokenType != JsonTokenType.EndObject)
        {
            var name = reader.GetString()!;
            reader.Read();
            members.Add(new(name, ParseValue(ref reader)));
        }
        return members;
    }

    private static List<JsonTree> ParseElements(ref Utf8JsonReader reader)
    {
        var elements = new List<JsonTree>();
        while (reader.Read() && reader.TokenType != JsonTokenType.EndArray)
            elements.Add(ParseValue(ref reader));
        return elements;
    }
}
