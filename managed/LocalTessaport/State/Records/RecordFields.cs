namespace Quorvex.Tessaport.API.Local;

/// <summary>How the parts of a record are stored.</summary>
internal static class RecordFields
{
    public static void Write(BinaryWriter to, FileIdentity identity)
    {
        to.Write7BitEncodedInt64((long)identity.Number);
        to.Write(identity.Moment);
    }

    public static FileIdentity Identity(ref RecordReader from) => new(from.Number(), (long)from.Fixed64());

    public static void Write(BinaryWriter to, FileTime time)
    {
        to.Write7BitEncodedInt64((time.Seconds << 1) ^ (time.Seconds >> 63));
        to.Write(time.Nanoseconds);
    }

    public static FileTime Time(ref RecordReader from)
    {
        var seconds = from.Number();
        return new FileTime((long)(seconds >> 1) ^ -(long)(seconds & 1), (int)from.Fixed32());
    }

    public static void Write(BinaryWriter to, ContentHash hash)
    {
        to.Write(hash.First);
        to.Write(hash.Second);
        to.Write(hash.Third);
        to.Write(hash.Fourth);
    }

    public static ContentHash Hash(ref RecordReader from) => new(from.Fixed64(), from.Fixed64(), from.Fixed64(), from.Fixed64());
}
