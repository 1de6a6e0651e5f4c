namespace Quorvex.Tessaport.API.Local;

/// <summary>Adds files from anywhere to a folder.</summary>
internal sealed class FileAddition
{
    private readonly DriveEdit _edit;
    private readonly ChangeReport _report;
    private readonly AdditionRules _rules;

    public FileAddition(DriveEdit edit, ChangeReport report, AdditionRules rules)
    {
        _edit = edit;
        _report = report;
        _rules = rules;
    }

    public void Add(string path)
    {
        _edit.Drive.RequireWritable();
        var (source, target) = _rules.RequireSource(path);
        if (!target.Exists)
        {
            FileTransfer.PutOnBothSides(_edit, FileSource.Outside(source), target);
            _report.Created(_edit.At(target.Path));
            return;
        }
        // Brings changes that were made on either side together first, so that the new version replaces nothing unseen.
        new ItemSync(_edit, _report).SyncFile(target.Path);
        if (!source.Equals(_edit.Drive.Workspace.PathOf(target.Path), RelativePath.Comparison))
            FileTransfer.PutOnBothSides(_edit, FileSource.Outside(source), _edit.At(target.Path));
        _report.Updated(_edit.At(target.Path));
    }
}
