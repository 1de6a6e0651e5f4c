using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;
using Velmora.Bridge.Boundary;

namespace Velmora.Bridge.Replies;

/// <summary>
/// Packs records into one block of native memory:
///
///     header     record count (4 bytes), handle count (4), offset of the handles (8)
///     records    numbers aligned to their size; a text is its length (4) and its UTF-16, filled up to 4 bytes
///     handles    8 bytes each, in the order in which the records refer to them
///
/// velmora/bridge/replies/ReplyReader.h reads it. Until MoveTo the writer owns the memory and the handles.
/// </summary>
internal sealed unsafe class ReplyWriter : IDisposable
{
    private const int HeaderSize = 16;
    private const nuint FirstCapacity = 512;

    // About a second-level cache: what was written is read again before it leaves it. Smaller pieces were slower here.
    private const nuint PieceSize = 1024 * 1024;

    private byte* data;
    private nuint size = HeaderSize;
    private nuint capacity;
    private long* handles;
    private nuint handleCount;
    private nuint handleCapacity;
    private HandleChain chain;
    private uint recordCount;

    public ReplyWriter()
    {
        capacity = FirstCapacity;
        data = (byte*)NativeMemory.Alloc(capacity);
    }

    public void WriteUInt32(uint value) => *(uint*)Append(sizeof(uint)) = value;

    public void WriteInt32(int value) => WriteUInt32((uint)value);

    public void WriteBool(bool value) => WriteUInt32(value ? 1u : 0u);

    public void WriteUInt64(ulong value)
    {
        Align(sizeof(ulong));
        *(ulong*)Append(sizeof(ulong)) = value;
    }

    /// <summary>Makes room for a number that is known later, and returns its place for WriteUInt32At.</summary>
    public nuint ReserveUInt32()
    {
        nuint place = size;
        WriteUInt32(0);
        return place;
    }

    public void WriteUInt32At(nuint place, uint value) => *(uint*)(data + place) = value;

    public void WriteGuid(in Guid value) => value.TryWriteBytes(new Span<byte>(Append(16), 16), true, out _);

    /// <summary>Null is written as the empty text.</summary>
    public void WriteText(string? text)
    {
        ReadOnlySpan<char> characters = text;
        byte* target = Append(sizeof(uint) + Filled((nuint)characters.Length * sizeof(char), sizeof(uint)));
        *(uint*)target = (uint)characters.Length;
        characters.CopyTo(new Span<char>(target + sizeof(uint), characters.Length));
    }

    /// <summary>A text that the record cannot be without: null fails as any use of it would.</summary>
    public void WriteRequiredText(string text) => WriteText(text.ToString());

    /// <summary>Refers to a managed object by the next handle.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public void WriteHandle(object? target)
    {
        if (handleCount == handleCapacity)
            GrowHandles();
        handles[handleCount] = chain.Add(target);
        ++handleCount;
    }

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public void Align(nuint alignment)
    {
        nuint aligned = Filled(size, alignment);
        Append(aligned - size);
    }

    /// <summary>Makes room at the end and returns where it is; what is written there is up to the caller.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public byte* Append(nuint count)
    {
        if (count > capacity - size)
            Grow(count);
        byte* target = data + size;
        size += count;
        return target;
    }

    /// <summary>Ends a record of a list: when the native side takes pieces and this one is full, it is passed on now.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public void EndRecord(Reply* reply)
    {
        ++recordCount;
        if (size >= PieceSize && reply->TakePiece != null)
            PassPiece(reply);
    }

    /// <summary>Hands memory and handles over to the native side: the only piece, or the last one.</summary>
    public void MoveTo(Reply* reply)
    {
        Complete();
        reply->Data = data;
        reply->Size = size;
        reply->HandlesTaken = 0;
        data = null;
        handleCount = 0;
    }

    /// <summary>MoveTo for a reply that is no list.</summary>
    public void MoveTo(Reply* reply, uint count)
    {
        recordCount = count;
        MoveTo(reply);
    }

    public void Dispose()
    {
        for (nuint i = 0; i < handleCount; ++i)
            HandleTable.Release(handles[i]);
        handleCount = 0;
        chain.Dispose();
        NativeMemory.Free(handles);
        NativeMemory.Free(data);
        handles = null;
        data = null;
    }

    /// <summary>Frees a reply and the handles in it that the native side has not taken over.</summary>
    public static void Release(Reply* reply)
    {
        byte* data = reply->Data;
        if (data == null)
            return;
        ulong count = *(uint*)(data + 4);
        long* handles = (long*)(data + *(ulong*)(data + 8));
        for (ulong i = reply->HandlesTaken; i < count; ++i)
            HandleTable.Release(handles[i]);
        NativeMemory.Free(data);
        reply->Data = null;
        reply->Size = 0;
    }

    public static void WriteMessage(string message, Reply* reply)
    {
        using var writer = new ReplyWriter();
        writer.WriteText(message);
        writer.MoveTo(reply, 1);
    }

    private void Complete()
    {
        Align(sizeof(long));
        nuint offset = size;
        nuint handleBytes = handleCount * sizeof(long);
        NativeMemory.Copy(handles, Append(handleBytes), handleBytes);
        *(uint*)data = recordCount;
        *(uint*)(data + 4) = checked((uint)handleCount);
        *(ulong*)(data + 8) = offset;
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private void PassPiece(Reply* reply)
    {
        Complete();
        reply->Data = data;
        reply->Size = size;
        reply->HandlesTaken = 0;
        int refused = reply->TakePiece(reply);
        ulong taken = reply->HandlesTaken;
        reply->Data = null;
        reply->Size = 0;
        for (nuint i = (nuint)taken; i < handleCount; ++i)
            HandleTable.Release(handles[i]);
        size = HeaderSize;
        handleCount = 0;
        recordCount = 0;
        if (refused != 0)
            throw new OperationCanceledException("The native side refused a piece of the list.");
    }

    private static nuint Filled(nuint count, nuint alignment) => (count + alignment - 1) & ~(alignment - 1);

    [MethodImpl(MethodImplOptions.NoInlining)]
    private void Grow(nuint count)
    {
        // Each step copies what was written. Few of them up to a piece: room that stays empty costs only addresses.
        nuint factor = capacity < PieceSize ? 8u : 2u;
        nuint grown = Math.Max(checked(capacity * factor), checked(size + count));
        data = (byte*)NativeMemory.Realloc(data, grown);
        capacity = grown;
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private void GrowHandles()
    {
        nuint grown = Math.Max(16, checked(handleCapacity * 2));
        handles = (long*)NativeMemory.Realloc(handles, checked(grown * sizeof(long)));
        handleCapacity = grown;
    }
}
