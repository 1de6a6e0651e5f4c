using System.Runtime.ExceptionServices;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Copies files from one side to the other in groups: the copies of a group are prepared in parallel, flushed
/// together, which takes much less time than one by one, and only then put in their places.
/// </summary>
internal sealed class TransferQueue
{
    // Larger groups took no less time per file.
    private const int MostFiles = 256;
    private const long MostBytes = 64 << 20;

    private static readonly ParallelOptions Threads = new() { MaxDegreeOfParallelism = Math.Clamp(Environment.ProcessorCount, 1, 4) };

    private readonly DriveEdit _edit;
    private readonly SyncProgress _progress;
    private readonly ChangeReport _report;
    private readonly List<Transfer> _waiting = [];
    private long _bytes;

    public TransferQueue(DriveEdit edit, SyncProgress progress, ChangeReport report)
    {
        _edit = edit;
        _progress = progress;
        _report = report;
    }

    /// <summary>
    /// Queues a copy of a file from one side to the other. The file there is replaced if it is still the one in the node.
    /// </summary>
    public void Add(SnapshotNode node, SideName from)
    {
        var path = node.Path;
        NameRules.Require(node.Name);
        if (from == SideName.Workspace)
            _edit.Drive.RequireWritable();
        _waiting.Add(new Transfer(node, path, from));
        _bytes += node[from]?.Size ?? 0;
        if (_waiting.Count >= MostFiles || _bytes >= MostBytes)
            Flush();
    }

    /// <summary>Copies the queued files. A file that fails does not prevent the others.</summary>
    public void Flush()
    {
        try
        {
            if (_waiting.Count == 1)
                Prepare(_waiting[0]);
            else
                Parallel.ForEach(_waiting, Threads, Prepare);
            FlushCopies();
            foreach (var transfer in _waiting)
                _progress.Attempt(transfer.Path, () => Commit(transfer));
        }
        finally
        {
            _waiting.ForEach(transfer => transfer.Copy?.Dispose());
            _waiting.Clear();
            _bytes = 0;
        }
    }

    private void Prepare(Transfer transfer)
    {
        try
        {
            var (from, to) = (_edit.Drive.Side(transfer.From), _edit.Drive.Side(transfer.From.Opposite()));
            transfer.Copy = StagedCopy.Prepare(from.At(transfer.Path), to);
        }
        catch (Exception e)
        {
            transfer.Failure = e;
        }
    }

    private void FlushCopies()
    {
        var prepared = new List<StagedCopy>(_waiting.Count);
        foreach (var transfer in _waiting)
        {
            if (transfer.Copy is not null)
                prepared.Add(transfer.Copy);
        }
        try
        {
            StagedCopy.Flush(prepared);
        }
        catch (Exception e)
        {
            // It is unknown which copy is not on the disk, so none may be used.
            foreach (var transfer in _waiting)
                transfer.Failure ??= e;
        }
    }

    private void Commit(Transfer transfer)
    {
        if (transfer.Failure is { } failure)
            ExceptionDispatchInfo.Throw(failure);
        var copy = transfer.Copy!;
        var to = transfer.From.Opposite();
        var placed = Put(transfer, copy, _edit.Drive.Side(to), transfer.Node[to]);
        _progress.Worked();
        var (sent, arrived) = (SeenVersion.Now(copy.Source), SeenVersion.Placed(placed));
        var record = transfer.From == SideName.Workspace
            ? SyncedRecord.ForFile(transfer.Path, sent, arrived, ContentHash.Parse(copy.Hash))
            : SyncedRecord.ForFile(transfer.Path, arrived, sent, ContentHash.Parse(copy.Hash));
        transfer.Node[transfer.From] = copy.Source;
        transfer.Node[to] = placed;
        var view = _edit.ViewOf(transfer.Node, transfer.Path);
        _edit.RecordSynced(record, view);
        _report.Updated(view, SyncActions.From(transfer.From));
    }

    private static FileEntry Put(Transfer transfer, StagedCopy copy, DriveSide side, FileEntry? expected)
    {
        try
        {
            return copy.Commit(0, side, transfer.Path, expected);
        }
        catch (IOException) when (side.FindAny(transfer.Path) is { Kind: EntryKind.Other })
        {
            throw Obstacle.At(side, transfer.Path);
        }
    }

    private sealed class Transfer
    {
        public Transfer(SnapshotNode node, string path, SideName from)
        {
            Node = node;
            Path = path;
            From = from;
        }

        public SnapshotNode Node { get; }
        public string Path { get; }
        public SideName From { get; }
        public StagedCopy? Copy { get; set; }
        public Exception? Failure { get; set; }
    }
}
