using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Takes items out of a drive.</summary>
internal static class Removal
{
    /// <summary>Moves an item into the staging folder, unless it is not the expected one; then it stays or goes back.</summary>
    public static void MoveAside(OpenFolder folder, string name, OpenFolder staging, FileEntry expected)
    {
        var place = Path.Join(folder.Path, name);
        if (folder.Find(name) is not { } found || !IsExpected(found, expected))
            throw new ChangedException(place);
        Step.Reached("Remove.Checked", place);
        var aside = Staging.NewName();
        folder.Move(name, staging, aside);
        Step.Reached("Remove.Moved", place);
        if (staging.Find(aside) is { } moved && IsExpected(moved, expected with { ChangeTime = default }))
            return;
        new Placement(staging, aside, default, folder, name).PutBackOrBeside();
        throw new ChangedException(place);
    }

    // A folder goes with everything in it, so only its number tells it from another.
    private static bool IsExpected(FileEntry found, FileEntry expected) => expected.IsFolder
        ? found.IsFolder && found.Identity.Number == expected.Identity.Number
        : found.IsUnchangedSince(expected);
}
