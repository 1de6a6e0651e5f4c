namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// What a sync does to a drive and sees of it. A sync makes the same decisions whether its steps are carried out or only planned.
/// </summary>
internal interface ISyncSteps
{
    /// <summary>Looks at an item, the folders above it and everything in it.</summary>
    DriveSnapshot LookAt(string path);

    /// <summary>Looks at the entire drive.</summary>
    DriveSnapshot LookAtAll();

    /// <summary>What is at a path now.</summary>
    ItemView ViewAt(string path);

    FileSource FileAt(SideName side, SnapshotNode node);

    /// <exception cref="ChangedException">The item is not what it was when it was looked at.</exception>
    void RequireSame(SideName side, SnapshotNode node, string path);

    /// <summary>Creates a folder on the side on which it is missing.</summary>
    void MakeFolder(SnapshotNode folder, SideName side);

    /// <summary>Renames or moves an item; never replaces anything.</summary>
    void Move(SideName side, string from, string to);

    void Exchange(SideName side, string one, string other);

    /// <summary>Keeps the version of one side beside a file, on both sides; returns the copy.</summary>
    ItemView KeepCopy(SnapshotNode node, string path, SideName side);

    ITransfers Transfers(SyncProgress progress, ChangeReport report);

    /// <summary>Notes that both sides of an item are equal now.</summary>
    void Record(SyncedRecord record, ItemView view);
}

/// <summary>Copies files from one side to the other, in groups; disposing it gives up those that are not in their places.</summary>
internal interface ITransfers : IDisposable
{
    /// <summary>
    /// Queues a copy of a file from one side to the other. The file there is replaced if it is still the one in the node.
    /// </summary>
    void Add(SnapshotNode node, SideName from);

    /// <summary>Copies the queued files. A file that fails does not prevent the others.</summary>
    void Flush();
}
