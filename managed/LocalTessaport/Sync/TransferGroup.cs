namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Files whose copies are prepared in parallel and flushed together, which takes much less time than one by one.
/// </summary>
internal sealed class TransferGroup : IDisposable
{
    private static readonly ParallelOptions Threads = new() { MaxDegreeOfParallelism = Math.Clamp(Environment.ProcessorCount, 1, 4) };

    private readonly LocalDrive _drive;
    private Task? _preparation;

    public TransferGroup(LocalDrive drive, List<Transfer> transfers)
    {
        _drive = drive;
        Transfers = transfers;
    }

    public List<Transfer> Transfers { get; }

    /// <summary>Begins to prepare the copies on other threads.</summary>
    public void Start() => _preparation = Task.Run(Prepare);

    /// <summary>
    /// Returns when each file has its copy, flushed to the disk, or its failure. Prepares them on this thread if the
    /// preparation was not started.
    /// </summary>
    public void Wait()
    {
        if (_preparation is null)
        {
            Prepare();
            _preparation = Task.CompletedTask;
        }
        _preparation.GetAwaiter().GetResult();
    }

    /// <summary>Deletes the copies that were not put in their places, after those that are being prepared are ready.</summary>
    public void Dispose()
    {
        _preparation?.GetAwaiter().GetResult();
        Transfers.ForEach(transfer => transfer.Copy?.Dispose());
    }

    private void Prepare()
    {
        if (Transfers.Count == 1)
            Prepare(Transfers[0]);
        else
            Parallel.ForEach(Transfers, Threads, Prepare);
        FlushCopies();
    }

    private void Prepare(Transfer transfer)
    {
        try
        {
            var (from, to) = (_drive.Side(transfer.From), _drive.Side(transfer.From.Opposite()));
            transfer.Copy = StagedCopy.Prepare(from.At(transfer.Path), to);
        }
        catch (Exception e)
        {
            transfer.Failure = e;
        }
    }

    private void FlushCopies()
    {
        var prepared = new List<StagedCopy>(Transfers.Count);
        foreach (var transfer in Transfers)
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
            foreach (var transfer in Transfers)
                transfer.Failure ??= e;
        }
    }
}
