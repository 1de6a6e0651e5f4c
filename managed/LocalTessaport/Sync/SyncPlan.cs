using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Says what a sync would do now, by making the sync's own decisions without carrying them out.</summary>
internal static class SyncPlan
{
    /// <summary>A JSON array with one object for each item that a sync of the item would list as changed or not done.</summary>
    public static string Describe(PropertySource top)
    {
        var report = new ChangeReport();
        using (var edit = new DriveEdit(top.Drive, top.Index.Clone()))
        {
            var path = top.View.Path;
            report.Attempt(() => Plan(edit, report, path), reason => report.Fail(edit.Index, path, reason));
        }
        return JsonList.Make(json => Write(json, report));
    }

    private static void Plan(DriveEdit edit, ChangeReport report, string path)
    {
        edit.Drive.RequireFolders();
        new ItemSync(edit, report, new PlannedSteps(edit)).SyncTree(path);
    }

    private static void Write(Utf8JsonWriter json, ChangeReport report)
    {
        foreach (var item in report.CreatedItems)
            Write(json, item.Path, item.IsFolder, "action", SyncActions.KeptTwice);
        foreach (var item in report.UpdatedItems)
        {
            if (item.Action is { } action)
                Write(json, item.Path, item.IsFolder, "action", action);
        }
        foreach (var (path, reason) in report.FailedItems)
            Write(json, path, isFolder: false, "error", reason.Message);
    }

    private static void Write(Utf8JsonWriter json, string path, bool isFolder, string member, string value)
    {
        json.WriteStartObject();
        json.WriteString("path", path);
        json.WriteBoolean("folder", isFolder);
        json.WriteString(member, value);
        json.WriteEndObject();
    }
}
