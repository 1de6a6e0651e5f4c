namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Strings in JSON. One with an unpaired surrogate, which JSON strings cannot carry, is an array of its UTF-16 units.
/// </summary>
internal static class Strings
{
    public static string? Read(JsonElement json) => json.ValueKind switch
    {
        JsonValueKind.Null => null,
        JsonValueKind.Array => new string(json.EnumerateArray().Select(unit => (char)unit.GetUInt16()).ToArray()),
        _ => json.GetString(),
    };

    public static string Required(JsonElement json) =>
        Read(json) ?? throw new FormatException("A string is needed where the script has null.");

    public static void Write(Utf8JsonWriter writer, string text)
    {
        if (!HasUnpairedSurrogate(text))
        {
            writer.WriteStringValue(text);
            return;
        }
        writer.WriteStartArray();
        foreach (char unit in text)
            writer.WriteNumberValue(unit);
        writer.WriteEndArray();
    }

    private static bool HasUnpairedSurrogate(string text)
    {
        for (int i = 0; i < text.Length; ++i)
        {
            if (!char.IsSurrogate(text[i]))
                continue;
            if (i + 1 == text.Length || !char.IsSurrogatePair(text[i], text[i + 1]))
                return true;
            ++i;
        }
        return false;
    }
}
