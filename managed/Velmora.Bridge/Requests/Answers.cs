using System.Collections.Generic;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

/// <summary>Replies in the three shapes that requests share.</summary>
internal static unsafe class Answers
{
    public delegate void RecordAction<in T>(ReplyWriter writer, T record);

    public static void One<T>(T record, RecordAction<T> write, Reply* reply)
    {
        using var writer = new ReplyWriter();
        write(writer, record);
        writer.MoveTo(reply, 1);
    }

    public static void List<T>(IEnumerable<T> records, RecordAction<T> write, Reply* reply)
    {
        using var writer = new ReplyWriter();
        uint count = 0;
        foreach (T record in records) {
            write(writer, record);
            ++count;
        }
        writer.MoveTo(reply, count);
    }

    /// <summary>For lists that the sync application may leave out.</summary>
    public static void OptionalList<T>(IEnumerable<T>? records, RecordAction<T> write, Reply* reply) =>
        List(records ?? System.Array.Empty<T>(), write, reply);

    public static void Items(IEnumerable<Item>? items, Reply* reply)
    {
        using ReplyWriter writer = ItemWriter.WriterFor(items);
        uint count = 0;
        ItemWriter.WriteItems(writer, items, ref count);
        writer.MoveTo(reply, count);
    }

    public static void Flag(bool value, Reply* reply) => One(value, static (writer, flag) => writer.WriteBool(flag), reply);
}
