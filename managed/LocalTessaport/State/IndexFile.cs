using System;
using System.IO;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The form in which the records of a drive lie on the disk.</summary>
internal static class IndexFile
{
    private const int Version = 1;

    public static void Write(HomeFolder home, string path, DriveIndex index) => AtomicFile.Write(home, path, stream =>
    {
        using var json = new Utf8JsonWriter(stream);
        json.WriteStartObject();
        json.WriteNumber("version", Version);
        json.WriteStartArray("items");
        foreach (var record in index.Items.Records)
            Write(json, record);
        json.WriteEndArray();
        json.WriteStartArray("synced");
        foreach (var record in index.Synced.Records)
            Write(json, record);
        json.WriteEndArray();
        json.WriteEndObject();
    });

    public static DriveIndex Read(string path)
    {
        try
        {
            using var stream = AtomicFile.OpenForReading(path);
            using var document = JsonDocument.Parse(stream);
            if (document.RootElement.GetProperty("version").GetInt32() != Version)
                throw new FormatException("it was written by another version");
            var index = new DriveIndex();
            foreach (var element in document.RootElement.GetProperty("items").EnumerateArray())
                index.Items.Put(ParseItem(element));
            foreach (var element in document.RootElement.GetProperty("synced").EnumerateArray())
                index.Synced.Put(ParseSynced(element));
            return index.Clone();
        }
        catch (Exception e) when (e is not (IOException or UnauthorizedAccessException))
        {
            throw new InvalidDataException(
                $"What is remembered of a drive cannot be read from '{path}': {e.Message.TrimEnd('.')}. "
                + "Remove that file; no user file is lost, but permanent ids and locks are.");
        }
    }

    private static void Write(Utf8JsonWriter json, ItemRecord record)
    {
        json.WriteStartObject();
        json.WriteString("id", record.Key);
        WritePlace(json, record.Path, record.IsFolder, record.Local, record.Remote);
        if (record.Content is { } content)
        {
            json.WriteNumber("size", content.Size);
            json.WriteString("hash", content.Hash);
        }
        if (record.LockedBy is not null)
            json.WriteString("lockedBy", record.LockedBy);
        json.WriteEndObject();
    }

    private static void Write(Utf8JsonWriter json, SyncedRecord record)
    {
        json.WriteStartObject();
        WritePlace(json, record.Path, record.IsFolder, record.Local, record.Remote);
        json.WriteStartArray("stamps");
        json.WriteNumberValue(record.LocalStamp.Time);
        json.WriteNumberValue(record.LocalStamp.Size);
        json.WriteNumberValue(record.RemoteStamp.Time);
        json.WriteNumberValue(record.RemoteStamp.Size);
        json.WriteEndArray();
        json.WriteEndObject();
    }

    private static void WritePlace(Utf8JsonWriter json, string path, bool isFolder, FileIdentity local, FileIdentity remote)
    {
        json.WriteString("path", path);
        if (isFolder)
            json.WriteBoolean("folder", true);
        if (local.IsKnown)
            json.WriteString("local", local.ToString());
        if (remote.IsKnown)
            json.WriteString("remote", remote.ToString());
    }

    private static ItemRecord ParseItem(JsonElement element) => new()
    {
        Key = element.GetProperty("id").GetGuid(),
        Path = element.GetProperty("path").GetString()!,
        IsFolder = element.TryGetProperty("folder", out _),
        Local = Identity(element, "local"),
        Remote = Identity(element, "remote"),
        Content = Text(element, "hash") is { } hash ? new ContentMark(element.GetProperty("size").GetInt64(), hash) : null,
        LockedBy = Text(element, "lockedBy"),
    };

    private static SyncedRecord ParseSynced(JsonElement element)
    {
        var stamps = element.GetProperty("stamps");
        return new SyncedRecord(
            element.GetProperty("path").GetString()!,
            element.TryGetProperty("folder", out _),
            new FileStamp(stamps[0].GetInt64(), stamps[1].GetInt64()),
            new FileStamp(stamps[2].GetInt64(), stamps[3].GetInt64()))
        {
            Local = Identity(element, "local"),
            Remote = Identity(element, "remote"),
        };
    }

    private static FileIdentity Identity(JsonElement element, string member) =>
        Text(element, member) is { } text ? FileIdentity.Parse(text) : FileIdentity.None;

    private static string? Text(JsonElement element, string member) =>
        element.TryGetProperty(member, out var value) ? value.GetString() : null;
}
