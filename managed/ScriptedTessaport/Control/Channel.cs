using System.Globalization;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Connects a test program with this assembly. The program attaches itself by a request, so that it need not export
/// anything, and gets one function, which takes an order as JSON and passes the answer, as JSON, to a function of the
/// program. It is the counterpart of velmora/testkit/Channel.cpp.
/// </summary>
internal static unsafe class Channel
{
    private const string Greeting = "velmora-testkit attach ";

    /// <summary>Attaches the program if the arguments of FileClosedWithinRunningProcess are its greeting.</summary>
    public static bool TryAttach(int processId, string? path)
    {
        if (path == null || processId != Environment.ProcessId || !path.StartsWith(Greeting, StringComparison.Ordinal))
            return false;
        ulong address = ulong.Parse(path.AsSpan(Greeting.Length), NumberStyles.AllowHexSpecifier, CultureInfo.InvariantCulture);
        var attach = (delegate* unmanaged<delegate* unmanaged<byte*, long, void*, delegate* unmanaged<void*, byte*, long, void>, void>, void>)address;
        Journal.IsOn = true;
        attach(&Execute);
        return true;
    }

    [UnmanagedCallersOnly]
    private static void Execute(byte* order, long length, void* context, delegate* unmanaged<void*, byte*, long, void> receive)
    {
        byte[] answer = AnswerTo(new ReadOnlySpan<byte>(order, checked((int)length)).ToArray());
        fixed (byte* data = answer)
            receive(context, data, answer.Length);
    }

    private static byte[] AnswerTo(byte[] order)
    {
        using var stream = new MemoryStream();
        try
        {
            Write(stream, order);
        }
        catch (Exception e)
        {
            stream.SetLength(0);
            using var writer = new Utf8JsonWriter(stream);
            writer.WriteStartObject();
            writer.WriteString("error", e.Message);
            writer.WriteEndObject();
        }
        return stream.ToArray();
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static void Write(Stream stream, byte[] order)
    {
        using var document = JsonDocument.Parse(order, new JsonDocumentOptions { MaxDepth = 64 });
        using var writer = new Utf8JsonWriter(stream);
        writer.WriteStartObject();
        writer.WritePropertyName("answer");
        Orders.Execute(document.RootElement, writer);
        writer.WriteEndObject();
    }
}
