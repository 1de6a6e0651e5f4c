namespace Quorvex.Tessaport.API.Local;

/// <summary>Takes items out of a drive.</summary>
internal static class Removal
{
    /// <summary>Moves an item into the staging folder. An item other than the expected one stays, or is put back.</summary>
    public static void MoveAside(OpenFolder folder, string path, OpenFolder staging, FileEntry expected)
    {
        var name = RelativePath.NameOf(path);
        var place = Path.Join(folder.Path, name);
        if (folder.Find(name) is not { } found || !IsExpected(found, expected))
            throw new ChangedException(place);
        Step.Reached("Remove.Checked", place);
        var staged = UncheckedName.For(expected, FileIdentity.None);
        var aside = staged.Text;
        staging.Places.Add(staged, path);
        try
        {
            folder.Move(name, staging, aside);
        }
        catch
        {
            staging.Places.Settle();
            throw;
        }
        Step.Reached("Remove.Moved", place);
        if (staging.Find(aside) is { } moved && IsExpected(moved, expected with { ChangeTime = default }))
        {
            // On a file system that numbers a file anew when it is renamed, it would not be recognized later.
            staging.Move(aside, staging, Staging.NewName());
            staging.Places.Settle();
            return;
        }
        new Placement(staging, aside, default, folder, path).PutBackOrBeside();
        staging.Places.Settle();
        throw new ChangedException(place);
    }

    // A folder is moved with everything in it, so it is compared by its number only.
    public static bool IsExpected(FileEntry found, FileEntry expected) => expected.IsFolder
        ? found.IsFolder && found.Identity.Number == expected.Identity.Number
        : found.IsUnchangedSince(expected);
}
