namespace Quorvex.Tessaport.API.Local;

/// <summary>The steps of a sync, carried out.</summary>
internal sealed class DriveSteps : ISyncSteps
{
    private readonly DriveEdit _edit;

    public DriveSteps(DriveEdit edit) => _edit = edit;

    public DriveSnapshot LookAt(string path) => DriveSnapshot.Take(_edit.Drive, path);

    public DriveSnapshot LookAtAll() => _edit.WholeSnapshot();

    public ItemView ViewAt(string path) => _edit.At(path);

    public FileSource FileAt(SideName side, SnapshotNode node) => _edit.Drive.Side(side).At(node.Path);

    public void RequireSame(SideName side, SnapshotNode node, string path)
    {
        var found = _edit.Drive.Side(side).Find(path);
        if (found is not { } now || node[side] is not { } seen || now.Identity != seen.Identity || now.IsFolder != seen.IsFolder)
            throw new ChangedException(_edit.Drive.Side(side).PathOf(path));
    }

    public void MakeFolder(SnapshotNode folder, SideName side) => FolderMaker.MakeMissing(_edit, folder, side);

    public void Move(SideName side, string from, string to) => _edit.Drive.Side(side).Move(from, to);

    public void Exchange(SideName side, string one, string other) => _edit.Drive.Side(side).Exchange(one, other);

    public ItemView KeepCopy(SnapshotNode node, string path, SideName side) =>
        _edit.At(ConflictCopy.Keep(_edit, path, side, node[side]!.Value.Modified));

    public ITransfers Transfers(SyncProgress progress, ChangeReport report) => new TransferQueue(_edit, progress, report);

    public void Record(SyncedRecord record, ItemView view) => _edit.RecordSynced(record, view);
}
