using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Connects the test program with this assembly. A program that exports scriptedTessaportAttach gets one function, which
/// takes an order as JSON and passes the answer, as JSON, to a function of the program.
/// </summary>
internal static unsafe class Channel
{
    /// <summary>False in programs without a script, such as benchmarks and hosts.</summary>
    public static readonly bool IsOpen = Open();

    private static bool Open()
    {
        if (!NativeLibrary.TryGetExport(NativeLibrary.GetMainProgramHandle(), "scriptedTessaportAttach", out nint address))
            return false;
        var attach = (delegate* unmanaged<delegate* unmanaged<byte*, long, void*, delegate* unmanaged<void*, byte*, long, void>, void>, void>)address;
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
            writer.WriteString("error", e.ToString());
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
