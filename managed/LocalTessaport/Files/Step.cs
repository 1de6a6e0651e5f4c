namespace Quorvex.Tessaport.API.Local;

/// <summary>Lets tests act between two steps of an operation.</summary>
internal static class Step
{
    /// <summary>Called with the name of the step and the path; null outside tests.</summary>
    internal static Action<string, string>? Hook { get; set; }

    public static void Reached(string name, string path) => Hook?.Invoke(name, path);
}
