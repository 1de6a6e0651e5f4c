namespace Quorvex.Tessaport.API.Local;

/// <summary>A file that goes from one side to the other.</summary>
internal sealed class Transfer(SnapshotNode node, string path, SideName from)
{
    public SnapshotNode Node { get; } = node;
    public string Path { get; } = path;
    public SideName From { get; } = from;

    /// <summary>The copy, once it is prepared.</summary>
    public StagedCopy? Copy { get; set; }

    /// <summary>Why there is no copy, or none that may be used.</summary>
    public Exception? Failure { get; set; }
}
