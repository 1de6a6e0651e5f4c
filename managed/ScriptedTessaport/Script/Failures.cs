namespace Quorvex.Tessaport.API.Scripted;

/// <summary>Exceptions by name: {"type": "TessaportNotRunningException", "message": …, "inner": exception}</summary>
internal static class Failures
{
    private static readonly string[] Namespaces = {
        "Quorvex.Tessaport.API", "Quorvex.Tessaport.API.Scripted", "System", "System.IO", "System.Collections.Generic",
    };

    /// <summary>
    /// Returns a function that makes a new exception at every call, because a thrown one keeps its stack trace.
    /// </summary>
    public static Func<Exception> Read(JsonElement json)
    {
        Type type = Find(json.GetProperty("type").GetString()!);
        string message = Strings.Required(json.GetProperty("message"));
        Func<Exception>? inner = json.TryGetProperty("inner", out JsonElement cause) ? Read(cause) : null;
        return () => (Exception)(inner == null
            ? Activator.CreateInstance(type, message)!
            : Activator.CreateInstance(type, message, inner())!);
    }

    private static Type Find(string name)
    {
        foreach (string space in Namespaces)
        {
            Type? type = Type.GetType($"{space}.{name}");
            if (type != null)
                return type;
        }
        throw new FormatException($"'{name}' is not an exception that the script knows.");
    }
}
