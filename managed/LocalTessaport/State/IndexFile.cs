using System.Text.Json;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads and writes the file with a drive's records. Earlier versions of the service wrote JSON, which is still read.</summary>
internal static class IndexFile
{
    private const int SecondVersion = 2;

    /// <summary>The records of ten million files; a sync of so many takes 16 GB of memory.</summary>
    internal static long MostBytes { get; set; } = 1 << 30;

    /// <exception cref="IOException">There is too much to remember; the file is as it was.</exception>
    public static void Write(HomeFolder home, string path, DriveIndex index) => AtomicFile.Write(home, path, stream =>
    {
        RecordFile.Write(stream, index);
        if (stream.Length > MostBytes)
            throw TooLarge(path);
    });

    public static DriveIndex Read(string path)
    {
        try
        {
            using var stream = HomeFile.OpenForReading(path);
            RequireSize(stream, path);
            var index = IsJson(stream) ? ReadJson(stream) : RecordFile.Read(ReadAll(stream), path);
            index.AcceptChanges();
            return index;
        }
        catch (Exception e) when (e is not (IOException or UnauthorizedAccessException or OutOfMemoryException))
        {
            throw Unreadable(path, e);
        }
    }

    public static InvalidDataException Unreadable(string path, Exception reason) => new(
        $"What is remembered of a drive cannot be read from '{path}': {reason.Message.TrimEnd('.')}. "
        + (reason is UnknownVersionException ? "Use that version, or remove that file" : "Remove that file")
        + "; no user file is lost, but permanent ids and locks are.");

    private static bool IsJson(FileStream stream)
    {
        var first = stream.ReadByte();
        stream.Position = 0;
        return first switch
        {
            -1 => throw new FormatException("it is empty"),
            '{' => true,
            _ => false,
        };
    }

    private static byte[] ReadAll(FileStream stream)
    {
        RecordFile.RequireBeginning(stream);
        var content = GC.AllocateUninitializedArray<byte>((int)stream.Length);
        stream.ReadExactly(content);
        return content;
    }

    // What the service wrote has no holes, so a file with one is not read, however long it claims to be.
    private static void RequireSize(FileStream stream, string path)
    {
        if (stream.Length > MostBytes)
            throw TooLarge(path);
        if (FileHandle.HasHole(stream.SafeFileHandle, stream.Length))
            throw new FormatException(RecordReader.Damaged);
    }

    private static IOException TooLarge(string path) => new(
        $"What is remembered of a drive takes more than the {MostBytes >> 20} MB that '{path}' may have. Use several drives with fewer files "
        + "each; if this one has fewer than ten million, remove that file.");

    private static DriveIndex ReadJson(FileStream stream)
    {
        var index = new DriveIndex();
        var lines = new LineReader(stream);
        lines.TryRead(out var first);
        switch (VersionOf(first))
        {
            case SecondVersion:
                while (lines.TryRead(out var line))
                    IndexLines.Read(line, index);
                break;
            case FirstIndexFile.Version:
                FirstIndexFile.Read(first, index);
                break;
            default:
                throw new UnknownVersionException("it was written by another version of the service");
        }
        return index;
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
