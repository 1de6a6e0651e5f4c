namespace Quorvex.Tessaport.API.Scripted;

/// <summary>The calls so far, in order. Off if no one can read them.</summary>
internal static class Journal
{
    private static readonly List<Call> Calls = new();

    public static bool IsOn { get; set; } = Channel.IsOpen;

    public static void Add(Call call)
    {
        if (!IsOn)
            return;
        lock (Calls)
            Calls.Add(call);
    }

    public static List<Call> Take()
    {
        lock (Calls)
        {
            var taken = new List<Call>(Calls);
            Calls.Clear();
            return taken;
        }
    }
}
