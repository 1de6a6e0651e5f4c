using System;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Tells a test that an operation has come to a point between two of its steps, so that the test can act there.</summary>
internal static class Step
{
    /// <summary>Called with the name of the step and the path concerned; null outside tests.</summary>
    internal static Action<string, string>? Hook { get; set; }

    public static void Reached(string name, string path) => Hook?.Invoke(name, path);
}
