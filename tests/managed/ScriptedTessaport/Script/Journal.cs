using System.Collections.Generic;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>The calls so far, in order. Off as long as nobody can read them.</summary>
internal static class Journal
{
    private static readonly List<Call> calls = new();

    public static bool IsOn { get; set; } = Channel.IsOpen;

    public static void Add(Call call)
    {
        if (!IsOn)
            return;
        lock (calls)
            calls.Add(call);
    }

    public static List<Call> Take()
    {
        lock (calls)
        {
            var taken = new List<Call>(calls);
            calls.Clear();
            return taken;
        }
    }
}
