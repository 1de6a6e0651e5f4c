using System.Collections;
using System.Runtime.CompilerServices;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>The orders that a test can give.</summary>
internal static class Orders
{
    public static void Execute(JsonElement order, Utf8JsonWriter answer)
    {
        string name = order.GetProperty("order").GetString()!;
        switch (name)
        {
            case "awaitHeld":
                answer.WriteBooleanValue(MemberOf(order).Gate.AwaitHeld(order.GetProperty("milliseconds").GetInt64()));
                break;
            case "calls":
                WriteCalls(answer, order.TryGetProperty("member", out JsonElement member) ? member.GetString() : null);
                break;
            case "collect":
                WriteCollected(answer);
                break;
            case "text":
                Strings.Write(answer, Values.Read(order.GetProperty("value"))!.ToString()!);
                break;
            default:
                Obey(name, order);
                answer.WriteNullValue();
                break;
        }
    }

    /// <summary>Executes an order that has no answer.</summary>
    private static void Obey(string name, JsonElement order)
    {
        switch (name)
        {
            case "answer":
                MemberOf(order).SetAnswers(order.GetProperty("answers"));
                break;
            case "answerFor":
                MemberOf(order).SetAnswersFor(Strings.Required(order.GetProperty("item")), order.GetProperty("answers"));
                break;
            case "delay":
                MemberOf(order).Gate.Delay(order.GetProperty("milliseconds").GetInt64());
                break;
            case "forget":
                MemberOf(order).Reset();
                break;
            case "hold":
                MemberOf(order).Gate.Hold();
                break;
            case "next":
                MemberOf(order).AddNext(order.GetProperty("answers"));
                break;
            case "record":
                Journal.IsOn = order.GetProperty("on").GetBoolean();
                break;
            case "release":
                MemberOf(order).Gate.Release();
                break;
            case "reset":
                Reset();
                break;
            default:
                throw new FormatException($"'{name}' is not an order that the script knows.");
        }
    }

    private static Member MemberOf(JsonElement order) => Member.Named(order.GetProperty("member").GetString()!);

    private static void Reset()
    {
        Member.ResetAll();
        Journal.Take();
        Journal.IsOn = true;
        ItemId.Known.Clear();
        Command.Known.Clear();
        TessaportService.ForgetAll();
    }

    private static void WriteCalls(Utf8JsonWriter writer, string? member)
    {
        writer.WriteStartArray();
        foreach (Call call in Journal.Take(member))
        {
            writer.WriteStartObject();
            writer.WriteString("member", call.Member);
            writer.WriteNumber("service", call.Service);
            foreach (var argument in call.Arguments)
            {
                writer.WritePropertyName(argument.Key);
                WriteValue(writer, argument.Value);
            }
            writer.WriteEndObject();
        }
        writer.WriteEndArray();
    }

    private static void WriteValue(Utf8JsonWriter writer, object? value)
    {
        switch (value)
        {
            case null:
                writer.WriteNullValue();
                break;
            case string text:
                Strings.Write(writer, text);
                break;
            case int number:
                writer.WriteNumberValue(number);
                break;
            case long number:
                writer.WriteNumberValue(number);
                break;
            case Guid id:
                writer.WriteStringValue(id);
                break;
            case IEnumerable list:
                writer.WriteStartArray();
                foreach (object? element in list)
                    WriteValue(writer, element);
                writer.WriteEndArray();
                break;
            default:
                throw new FormatException($"A {value.GetType()} cannot be recorded.");
        }
    }

    private static void WriteCollected(Utf8JsonWriter writer)
    {
        CollectGarbage();
        writer.WriteStartObject();
        WriteNumbers(writer, "items", ItemId.Known.Alive());
        WriteNumbers(writer, "commands", Command.Known.Alive());
        WriteNumbers(writer, "services", TessaportService.Known.Alive());
        writer.WriteNumber("bytes", GC.GetTotalMemory(false));
        writer.WriteEndObject();
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static void CollectGarbage()
    {
        for (int round = 0; round < 2; ++round)
        {
            GC.Collect(GC.MaxGeneration, GCCollectionMode.Forced, true, true);
            GC.WaitForPendingFinalizers();
        }
    }

    private static void WriteNumbers(Utf8JsonWriter writer, string name, int[] numbers)
    {
        writer.WritePropertyName(name);
        WriteValue(writer, numbers);
    }
}
