using System.Collections.Concurrent;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads the drives of a home from its configuration file.</summary>
internal static class DriveFile
{
    private static readonly ConcurrentDictionary<string, LastRead> Read = new();

    private sealed record LastRead(FileEntry Stamp, DriveList Drives);

    /// <summary>The drives as configured now. The file is parsed again only if it has changed.</summary>
    public static DriveList Load(HomeFolder home)
    {
        var path = home.ProposedDrivesFile ?? home.DrivesFile;
        try
        {
            if (HomeFile.Find(path) is not { } stamp)
                return DriveList.Empty;
            if (Read.TryGetValue(path, out var last) && last.Stamp == stamp)
                return last.Drives;
            var drives = ParseDrives(JsonFile.Read(path), home);
            Read[path] = new(stamp, drives);
            return drives;
        }
        catch (InvalidDataException e) when (home.ProposedDrivesFile is not null)
        {
            throw new InvalidDataException(
                $"{e.Message}. Choose differently, or correct '{home.DrivesFile}' if this is about another drive, and try again.");
        }
        catch (InvalidDataException e)
        {
            throw new InvalidDataException(
                $"The drives cannot be read from '{home.DrivesFile}': {e.Message}. Correct the file and try again.");
        }
    }

    private static DriveList ParseDrives(JsonTree root, HomeFolder home)
    {
        if (root.Kind != JsonValueKind.Array)
            throw new InvalidDataException("it is not an array");
        var paths = new RealPath();
        var drives = new List<LocalDrive>();
        foreach (var element in root.Elements)
            drives.Add(ParseDrive(element, home, paths));
        SideOverlap.RequireNone(drives, home.OwnPaths());
        return new DriveList(drives);
    }

    private static LocalDrive ParseDrive(JsonTree element, HomeFolder home, RealPath paths)
    {
        if (element.Kind != JsonValueKind.Object)
            throw new InvalidDataException("a drive is not an object");
        if (!Guid.TryParse(RequireString(element, "id"), out var id))
            throw new InvalidDataException($"the 'id' '{RequireString(element, "id")}' of a drive is not a GUID");
        var type = RequireString(element, "type");
        if (!DriveTypes.IsKnown(type))
            throw new InvalidDataException($"the 'type' '{type}' of a drive is not one of {string.Join(", ", DriveTypes.All)}");
        return new LocalDrive
        {
            Id = id,
            Name = RequireString(element, "name"),
            Type = type,
            Workspace = new DriveSide(paths.Resolve(SidePath(element, "workspace", id, home))),
            Server = new DriveSide(paths.Resolve(SidePath(element, "server", id, home))),
            Locking = Flag(element, "locking", otherwise: false),
            Writable = Flag(element, "writable", otherwise: true),
            Offline = Flag(element, "offline", otherwise: false),
            Ignored = Patterns(element),
        };
    }

    private static string SidePath(JsonTree element, string member, Guid id, HomeFolder home)
    {
        var folder = element.Find(member) is not null ? RequireString(element, member) : $"drives/{id:D}/{member}";
        return PathForm.TryNormalise(Path.Combine(home.Root, PathForm.ToPlatform(folder)))
            ?? throw new InvalidDataException($"the '{member}' '{folder}' of a drive is not a path");
    }

    private static string RequireString(JsonTree element, string member) =>
        element.Find(member)?.Text is { Length: > 0 } text
            ? text
            : throw new InvalidDataException($"the string '{member}' of a drive is missing");

    // Nothing of the patterns is loaded for a drive without any.
    private static IgnoreRules? Patterns(JsonTree element)
    {
        if (element.Find("ignore") is not { } value)
            return null;
        if (value.Kind != JsonValueKind.Array || value.Elements.Exists(pattern => pattern.Text is null))
            throw new InvalidDataException("the member 'ignore' of a drive is not an array of strings");
        return value.Elements.Count == 0
            ? null
            : new IgnoreRules(RequireString(element, "name"), value.Elements.ConvertAll(pattern => pattern.Text!));
    }

    private static bool Flag(JsonTree element, string member, bool otherwise)
    {
        return element.Find(member)?.Kind switch
        {
            null => otherwise,
            JsonValueKind.True => true,
            JsonValueKind.False => false,
            _ => throw new InvalidDataException($"the member '{member}' of a drive is neither true nor false"),
        };
    }
}
