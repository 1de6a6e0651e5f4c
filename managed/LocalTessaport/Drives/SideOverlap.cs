namespace Quorvex.Tessaport.API.Local;

/// <summary>Finds folders of drives that overlap each other or the files of the service.</summary>
internal static class SideOverlap
{
    private sealed record Place(string Prefix, string Path, LocalDrive? Drive);

    /// <exception cref="InvalidDataException">Two places overlap; the message is the reason.</exception>
    public static void RequireNone(IReadOnlyList<LocalDrive> drives, IEnumerable<string> ownPaths)
    {
        var places = new List<Place>();
        foreach (var path in ownPaths)
            places.Add(new Place(WithSlash(path), path, null));
        foreach (var drive in drives)
        {
            places.Add(new Place(WithSlash(drive.Workspace.Root), drive.Workspace.Root, drive));
            places.Add(new Place(WithSlash(drive.Server.Root), drive.Server.Root, drive));
        }
        places.Sort((a, b) => string.Compare(a.Prefix, b.Prefix, RelativePath.Comparison));
        RequireNoneInOrder(places);
    }

    // In this order, the contents of a folder follow it directly.
    private static void RequireNoneInOrder(List<Place> places)
    {
        var around = new Stack<Place>();
        foreach (var place in places)
        {
            while (around.TryPeek(out var last) && !place.Prefix.StartsWith(last.Prefix, RelativePath.Comparison))
                around.Pop();
            if (around.TryPeek(out var outer) && (outer.Drive ?? place.Drive) is not null)
                throw Overlap(outer, place);
            around.Push(place);
        }
    }

    // The root of a volume ends with its slash already.
    private static string WithSlash(string path) => Path.EndsInDirectorySeparator(path) ? path : path + Path.DirectorySeparatorChar;

    private static InvalidDataException Overlap(Place outer, Place inner)
    {
        if (outer.Drive is { } one && inner.Drive is { } other)
            return new InvalidDataException(
                $"the folder '{inner.Path}' of the drive '{other.Name}' and '{outer.Path}' of the drive '{one.Name}' overlap");
        var (side, own) = outer.Drive is null ? (inner, outer) : (outer, inner);
        return new InvalidDataException(
            $"the folder '{side.Path}' of the drive '{side.Drive!.Name}' overlaps '{own.Path}', which the service keeps for itself");
    }
}
