using System.Text.Json;

namespace Velmora.Peers;

/// <summary>The entire list as one JSON document.</summary>
public static unsafe class JsonListing
{
    [UnmanagedCallersOnly]
    public static nint Get(nint* size)
    {
        byte[] document = JsonSerializer.SerializeToUtf8Bytes(Listing.Items);
        void* copy = NativeMemory.Alloc((nuint)document.Length);
        document.AsSpan().CopyTo(new Span<byte>(copy, document.Length));
        *size = document.Length;
        return (nint)copy;
    }

    [UnmanagedCallersOnly]
    public static void Free(nint document) => NativeMemory.Free((void*)document);
}
