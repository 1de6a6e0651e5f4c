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
        // Failures of earlier additions are shown at the folder.
        _edit.Index.Failures.Remove(rules.Folder);
    }

    public void Add(string path)
    {
        _edit.Drive.RequireWritable();
        var (source, target) = _rules.RequireSource(path);
        LeftOut.RequireNot(target with { Drive = _edit.Drive });
        if (target.Exists)
            AddVersion(source, target.Path);
        else
            AddNew(source, target);
    }

    private void AddNew(string source, ItemView target)
    {
        FileTransfer.PutOnBothSides(_edit, FileSource.Outside(source), target);
        _report.Created(_edit.At(target.Path));
    }

    private void AddVersion(string source, string path)
    {
        // Syncs the file first, so that the new version replaces nothing unseen.
        new ItemSync(_edit, _report).SyncFile(path);
        Step.Reached("Add.Synced", path);
        if (!source.Equals(_edit.Drive.Workspace.PathOf(path), RelativePath.Comparison))
            FileTransfer.PutOnBothSides(_edit, FileSource.Outside(source), RequireSynced(path));
        _edit.Index.Failures.Remove(path);
        _report.Updated(_edit.At(path));
    }

    private ItemView RequireSynced(string path)
    {
        var view = _edit.At(path);
        var last = _edit.Index.Synced.ByPath(path);
        foreach (var side in SideNames.Both)
        {
            // A version that is too recent for its times to be reliable is replaced only if nothing changes it from here on.
            if (view.On(side) is { } entry && VersionCheck.Compare(entry, last, side) == VersionState.Changed)
                throw new ChangedException(_edit.Drive.Side(side).PathOf(path));
        }
        return view;
    }
}
