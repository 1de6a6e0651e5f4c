using System;
using System.Collections.Generic;
using System.Runtime.CompilerServices;
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

    [MethodImpl(MethodImplOptions.AggressiveOptimization)]
    public static void List<T>(IEnumerable<T> records, RecordAction<T> write, Reply* reply)
    {
        using var writer = new ReplyWriter();
        reply->ExpectedCount = records is ICollection<T> counted ? (ulong)counted.Count : 0;
        foreach (T record in records) {
            write(writer, record);
            writer.EndRecord(reply);
        }
        writer.MoveTo(reply);
    }

    /// <summary>For lists that the sync application may leave out.</summary>
    public static void OptionalList<T>(IEnumerable<T>? records, RecordAction<T> write, Reply* reply) =>
        List(records ?? Array.Empty<T>(), write, reply);

    public static void Items(IEnumerable<Item>? items, Reply* reply) => OptionalList(items, ItemWriter.WriteItem, reply);

    public static void Flag(bool value, Reply* reply) => One(value, static (writer, flag) => writer.WriteBool(flag), reply);
}
