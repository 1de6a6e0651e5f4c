namespace Quorvex.Tessaport.API.Scripted;

/// <summary>The calls so far, in order. Off until a program is attached that can read them.</summary>
internal static class Journal
{
    private static readonly List<Call> Calls = new();

    public static bool IsOn { get; set; }

    public static void Add(Call call)
    {
        if (!IsOn)
            return;
        lock (Calls)
            Calls.Add(call);
    }

    /// <summary>Removes the calls of a member, or all if it is null, and returns them.</summary>
    public static List<Call> Take(string? member = null)
    {
        lock (Calls)
        {
            List<Call> taken = Calls.Where(call => member == null || call.Member == member).ToList();
            Calls.RemoveAll(call => member == null || call.Member == member);
            return taken;
        }
    }
}
