using System;
using System.IO;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The form in which the records of a drive lie on the disk.</summary>
internal static class IndexFile
{
    private const int Version = 1;

    public static void Write(string path, ItemIndex index) => AtomicFile.Write(path, stream =>
    {
        using var json = new Utf8JsonWriter(stream);
        json.WriteStartObject();
        json.WriteNumber("version", Version);
        json.WriteStartArray("items");
        foreach (var record in index.Records)
            Write(json, record);
        json.WriteEndArray();
        json.WriteEndObject();
    });

    public static ItemIndex Read(string path)
    {
        try
        {
            using var stream = AtomicFile.OpenForReading(path);
            using var document = JsonDocument.Parse(stream);
            if (document.RootElement.GetProperty("version").GetInt32() != Version)
                throw new FormatException("it was written by another version");
            var index = new ItemIndex();
            foreach (var element in document.RootElement.GetProperty("items").EnumerateArray())
                index.Put(Parse(element));
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
        json.WriteString("id", record.Token);
        json.WriteString("path", record.Path);
        if (record.IsFolder)
            json.WriteBoolean("folder", true);
        if (record.Workspace.IsKnown)
            json.WriteString("local", record.Workspace.ToString());
        if (record.Server.IsKnown)
            json.WriteString("remote", record.Server.ToString());
        if (record.Synced is { } synced)
        {
            json.WriteStartArray("synced");
            json.WriteNumberValue(synced.LocalTime);
            json.WriteNumberValue(synced.LocalSize);
            json.WriteNumberValue(synced.RemoteTime);
            json.WriteNumberValue(synced.RemoteSize);
            json.WriteEndArray();
        }
        if (record.Hash is not null)
            json.WriteString("hash", record.Hash);
        if (record.LockedBy is not null)
            json.WriteString("lockedBy", record.LockedBy);
        json.WriteEndObject();
    }

    private static ItemRecord Parse(JsonElement element) => new()
    {
        Token = element.GetProperty("id").GetGuid(),
        Path = element.GetProperty("path").GetString()!,
        IsFolder = element.TryGetProperty("folder", out _),
        Workspace = Identity(element, "local"),
        Server = Identity(element, "remote"),
        Synced = element.TryGetProperty("synced", out var v)
            ? new SyncedVersion(v[0].GetInt64(), v[1].GetInt64(), v[2].GetInt64(), v[3].GetInt64())
            : null,
        Hash = Text(element, "hash"),
        LockedBy = Text(element, "lockedBy"),
    };

    private static FileIdentity Identity(JsonElement element, string member) =>
        Text(element, member) is { } text ? FileIdentity.Parse(text) : FileIdentity.None;

    private static string? Text(JsonElement element, string member) =>
        element.TryGetProperty(member, out var value) ? value.GetString() : null;
}
