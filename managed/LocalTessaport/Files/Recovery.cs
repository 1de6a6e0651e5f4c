namespace Quorvex.Tessaport.API.Local;

/// <summary>Puts back what a killed process took out of its place before it had checked it.</summary>
internal static class Recovery
{
    public const string AsideSuffix = ".old";

    // In the root of the side, for what comes from a place that is not known any more.
    private const string PlaceOfUnknown = "kept after a power failure";

    /// <summary>Puts back what is in a staging folder and must not be deleted.</summary>
    public static void Run(OpenFolder root, OpenFolder staging)
    {
        var places = PlaceList.ReadAll(staging);
        // What is listed includes no links, which can have come out as well.
        var names = new HashSet<UncheckedName>(places.Keys);
        foreach (var (name, _) in staging.Read())
        {
            if (UncheckedName.TryParse(WithoutSuffix(name)) is { } staged)
                names.Add(staged);
        }
        foreach (var staged in names)
            Run(root, staging, staged, places.GetValueOrDefault(staged));
    }

    private static void Run(OpenFolder root, OpenFolder staging, UncheckedName staged, string? place)
    {
        if (staging.Find(staged.Text) is { } cameOut && !staged.IsPrepared(cameOut) && !staged.IsExpected(cameOut))
            PutBack(root, staging, staged.Text, place);
        // Taken out by a process that was killed before it put the prepared file there.
        if (staging.Find(staged.Text + AsideSuffix) is not { } aside)
            return;
        if (!staged.IsExpected(aside) || (place is not null && Find(root, place) is null))
            PutBack(root, staging, staged.Text + AsideSuffix, place);
    }

    private static string WithoutSuffix(string name) =>
        name.EndsWith(AsideSuffix, StringComparison.Ordinal) ? name[..^AsideSuffix.Length] : name;

    private static void PutBack(OpenFolder root, OpenFolder staging, string staged, string? place)
    {
        place ??= PlaceOfUnknown;
        using var folder = RelativePath.FolderOf(place) is { Length: > 0 } path ? root.TryOpen(path) : null;
        new Placement(staging, staged, default, folder ?? root, place).PutBackOrBeside();
    }

    private static FileEntry? Find(OpenFolder root, string place)
    {
        if (RelativePath.FolderOf(place) is not { Length: > 0 } path)
            return root.Find(place);
        using var folder = root.TryOpen(path);
        return folder?.Find(RelativePath.NameOf(place));
    }
}
