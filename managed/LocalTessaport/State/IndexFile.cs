using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// The file format of a drive's records: one JSON object per line, the first with the version of the format. Reading and
/// writing need no more memory than the records themselves.
/// </summary>
internal static class IndexFile
{
    public const int Version = 2;

    public static void Write(HomeFolder home, string path, DriveIndex index) =>
        AtomicFile.Write(home, path, stream =>
        {
            var lines = new LineWriter(stream);
            lines.Write(static (json, version) => json.WriteNumber("version", version), Version);
            foreach (var record in index.Items.Records)
                lines.Write(IndexLines.Write, record);
            foreach (var record in index.Synced.Records)
                lines.Write(IndexLines.Write, record);
            foreach (var (failed, reason) in index.Failures.Reasons)
                lines.Write(IndexLines.WriteFailure, (failed, reason));
            lines.Flush();
        });

    public static DriveIndex Read(string path)
    {
        try
        {
            using var stream = AtomicFile.OpenForReading(path);
            var index = new DriveIndex();
            var lines = new LineReader(stream);
            if (!lines.TryRead(out var first))
                throw new FormatException("it is empty");
            switch (VersionOf(first))
            {
                case Version:
                    while (lines.TryRead(out var line))
                        IndexLines.Read(line, index);
                    break;
                case FirstIndexFile.Version:
                    FirstIndexFile.Read(first, index);
                    break;
                default:
                    throw new FormatException("it was written by another version");
            }
            index.AcceptChanges();
            return index;
        }
        catch (Exception e) when (e is not (IOException or UnauthorizedAccessException or OutOfMemoryException))
        {
            throw new InvalidDataException(
                $"What is remembered of a drive cannot be read from '{path}': {e.Message.TrimEnd('.')}. "
                + "Remove that file; no user file is lost, but permanent ids and locks are.");
        }
    }

    private static int VersionOf(ReadOnlyMemory<byte> line)
    {
        var reader = new Utf8JsonReader(line.Span);
        if (reader.Read() && reader.TokenType == JsonTokenType.StartObject && reader.Read() && reader.ValueTextEquals("version")
            && reader.Read() && reader.TryGetInt32(out var version))
            return version;
        throw new FormatException("it does not begin with a version");
    }
}
