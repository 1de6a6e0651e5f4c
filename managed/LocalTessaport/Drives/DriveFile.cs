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
            var drives = JsonFile.Read(path, root => ParseDrives(root, home));
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

    private static DriveList ParseDrives(JsonElement root, HomeFolder home)
    {
        if (root.ValueKind != JsonValueKind.Array)
            throw new InvalidDataException("it is not an array");
        var paths = new RealPath();
        var drives = new List<LocalDrive>();
        foreach (var element in root.EnumerateArray())
            drives.Add(ParseDrive(element, home, paths));
        SideOverlap.RequireNone(drives, home.OwnPaths());
        return new DriveList(drives);
    }

    private static LocalDrive ParseDrive(JsonElement element, HomeFolder home, RealPath paths)
    {
        if (element.ValueKind != JsonValueKind.Object)
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

    private static string SidePath(JsonElement element, string member, Guid id, HomeFolder home)
    {
        var folder = element.TryGetProperty(member, out _) ? RequireString(element, member) : $"drives/{id:D}/{member}";
        return PathForm.TryNormalise(Path.Combine(home.Root, PathForm.ToPlatform(folder)))
            ?? throw new InvalidDataException($"the '{member}' '{folder}' of a drive is not a path");
    }

    private static string RequireString(JsonElement element, string member) =>
        element.TryGetProperty(member, out var value) && value.ValueKind == JsonValueKind.String
        && value.GetString() is { Length: > 0 } text
            ? text
            : throw new InvalidDataException($"the string '{member}' of a drive is missing");

    // Nothing of the patterns is loaded for a drive without any.
    private static IgnoreRules? Patterns(JsonElement element)
    {
        if (!element.TryGetProperty("ignore", out var value))
            return null;
        if (value.ValueKind != JsonValueKind.Array || value.EnumerateArray().Any(pattern => pattern.ValueKind != JsonValueKind.String))
            throw new InvalidDataException("the member 'ignore' of a drive is not an array of strings");
        return value.GetArrayLength() == 0
            ? null
            : new IgnoreRules(RequireString(element, "name"), value.EnumerateArray().Select(pattern => pattern.GetString()!));
    }

    private static bool Flag(JsonElement element, string member, bool otherwise)
    {
        if (!element.TryGetProperty(member, out var value))
            return otherwise;
        return value.ValueKind is JsonValueKind.True or JsonValueKind.False
            ? value.GetBoolean()
            : throw new InvalidDataException($"the member '{member}' of a drive is neither true nor false");
    }
}
