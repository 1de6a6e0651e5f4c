namespace Velmora.Bridge.Requests;

/// <summary>Replies in the shapes that requests share.</summary>
internal static unsafe class Answers
{
    public delegate void RecordAction<in T>(ReplyWriter writer, T record);

    public static void One<T>(T record, RecordAction<T> write, Reply* reply)
    {
        using var writer = new ReplyWriter();
        write(writer, record);
        writer.MoveTo(reply, 1);
    }

    public static void Handle(object target, Reply* reply) =>
        One(target, static (writer, made) => writer.WriteHandle(made), reply);

    public static void List<T>(IEnumerable<T> records, RecordAction<T> write, Reply* reply)
    {
        using var writer = new ReplyWriter();
        // The length of an array cannot change, and a List<T> checks that it has not changed: both are read without
        // virtual calls. Anything else is only enumerated, because its other members may be slow or fail.
        if (records is T[] array)
            WriteArray(writer, array, write, reply);
        else if (records.GetType() == typeof(List<T>))
            WriteList(writer, (List<T>)records, write, reply);
        else
            foreach (T record in records)
                Write(writer, record, write, reply);
        writer.MoveTo(reply);
    }

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static void WriteArray<T>(ReplyWriter writer, T[] records, RecordAction<T> write, Reply* reply)
    {
        reply->ExpectedCount = (ulong)records.Length;
        foreach (T record in records)
            Write(writer, record, write, reply);
    }

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static void WriteList<T>(ReplyWriter writer, List<T> records, RecordAction<T> write, Reply* reply)
    {
        reply->ExpectedCount = (ulong)records.Count;
        foreach (T record in records)
            Write(writer, record, write, reply);
    }

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    private static void Write<T>(ReplyWriter writer, T record, RecordAction<T> write, Reply* reply)
    {
        write(writer, record);
        writer.EndRecord(reply);
    }

    /// <summary>List for members that may return null, which is an empty list.</summary>
    public static void OptionalList<T>(IEnumerable<T>? records, RecordAction<T> write, Reply* reply) =>
        List(records ?? Array.Empty<T>(), write, reply);

    public static void Items(IEnumerable<Item>? items, Reply* reply) => OptionalList(items, ItemWriter.WriteItem, reply);

    public static void Outcome(CommandResult result, Reply* reply)
    {
        using var writer = new ReplyWriter();
        CommandResultWriter.Write(writer, result, reply);
        writer.MoveTo(reply, 1);
    }

    public static void Flag(bool value, Reply* reply) => One(value, static (writer, flag) => writer.WriteBool(flag), reply);
}
