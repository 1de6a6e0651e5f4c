using System;
using System.Collections.Generic;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The configured drives, in their order.</summary>
internal sealed class DriveList
{
    private readonly Dictionary<Guid, LocalDrive> _byId = [];

    public DriveList(IReadOnlyList<LocalDrive> drives)
    {
        Drives = drives;
        foreach (var drive in drives)
        {
            if (!_byId.TryAdd(drive.Id, drive))
                throw new InvalidDataException($"two drives have the id '{drive.Id}'");
        }
        RequireSeparateFolders(drives);
    }

    public IReadOnlyList<LocalDrive> Drives { get; }

    public LocalDrive? Find(Guid id) => _byId.GetValueOrDefault(id);

    /// <summary>The drive in whose workspace a full path with either slash lies, and the path below its root; null for other places.</summary>
    public DrivePlace? Locate(string? path)
    {
        if (PathForm.TryNormalise(path) is not { } full)
            return null;
        return LocateNormalised(full) ?? LocateNormalised(RealPath.Of(full));
    }

    private DrivePlace? LocateNormalised(string full)
    {
        foreach (var drive in Drives)
        {
            if (drive.Workspace.TryGetRelative(full) is { } relative)
                return new DrivePlace(drive, relative);
        }
        return null;
    }

    private static void RequireSeparateFolders(IReadOnlyList<LocalDrive> drives)
    {
        var earlier = new List<(DriveSide Side, string Drive)>();
        foreach (var drive in drives)
        {
            foreach (var side in new[] { drive.Workspace, drive.Server })
            {
                foreach (var other in earlier)
                {
                    if (side.Overlaps(other.Side))
                        throw new InvalidDataException(
                            $"the folder '{side.Root}' of the drive '{drive.Name}' and one of the drive '{other.Drive}' lie inside each other");
                }
                earlier.Add((side, drive.Name));
            }
        }
    }
}

/// <summary>A place on a drive, whether or not something stands there.</summary>
internal readonly record struct DrivePlace(LocalDrive Drive, string Path);
