using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Reads the format of the first version of the service: one JSON document, whose stamps lack the time of the last change. They
/// count as not settled, so that the next sync compares contents once.
/// </summary>
internal static class FirstIndexFile
{
    public const int Version = 1;

    public static void Read(ReadOnlyMemory<byte> document, DriveIndex index)
    {
        using var json = JsonDocument.Parse(document);
        foreach (var element in json.RootElement.GetProperty("items").EnumerateArray())
            index.Items.Put(ParseItem(element));
        foreach (var element in json.RootElement.GetProperty("synced").EnumerateArray())
            index.Synced.Put(ParseSynced(element));
    }

    private static ItemRecord ParseItem(JsonElement element) => new()
    {
        Key = element.GetProperty("id").GetGuid(),
        Path = element.GetProperty("path").GetString()!,
        IsFolder = element.TryGetProperty("folder", out _),
        Local = Identity(element, "local"),
        Remote = Identity(element, "remote"),
        Content = StringOf(element, "hash") is { } hash
            ? new ContentMark(element.GetProperty("size").GetInt64(), ContentHash.Parse(hash))
            : null,
        LockedBy = StringOf(element, "lockedBy"),
    };

    private static SyncedRecord ParseSynced(JsonElement element)
    {
        var stamps = element.GetProperty("stamps");
        return new SyncedRecord(element.GetProperty("path").GetString()!, element.TryGetProperty("folder", out _))
        {
            Local = Identity(element, "local"),
            Remote = Identity(element, "remote"),
            LocalStamp = Stamp(stamps[0], stamps[1]),
            RemoteStamp = Stamp(stamps[2], stamps[3]),
        };
    }

    private static VersionStamp Stamp(JsonElement time, JsonElement size) =>
        new(size.GetInt64(), FileTime.Of(new DateTime(time.GetInt64(), DateTimeKind.Utc)), default, IsSettled: false);

    private static FileIdentity Identity(JsonElement element, string member) =>
        StringOf(element, member) is { } identity ? FileIdentity.Parse(identity) : FileIdentity.None;

    private static string? StringOf(JsonElement element, string member) =>
        element.TryGetProperty(member, out var value) ? value.GetString() : null;
}
