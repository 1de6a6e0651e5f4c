namespace Velmora.Bridge.Boundary;

/// <summary>
/// Packs records into one block of native memory: a header, the records, and the handles (see ReplyLayout.cs). Numbers
/// are aligned to their size; a string is its length and its UTF-16, filled up to four bytes.
/// velmora/bridge/boundary/ReplyReader.h reads it. Until MoveTo, the writer owns the memory and the handles.
/// </summary>
internal sealed unsafe class ReplyWriter : IDisposable
{
    private const nuint FirstCapacity = 512;

    // About the size of a second-level cache, so that the native side reads what is still in it. Smaller pieces were slower.
    private const nuint PieceSize = 1024 * 1024;

    private byte* _data;
    private nuint _size = (nuint)sizeof(ReplyHeader);
    private nuint _capacity;
    private long* _handles;
    private nuint _handleCount;
    private nuint _handleCapacity;
    private HandleChain _chain;
    private uint _recordCount;

    public ReplyWriter()
    {
        _capacity = FirstCapacity;
        _data = (byte*)NativeMemory.Alloc(_capacity);
    }

    public void WriteUInt32(uint value) => *(uint*)Append(sizeof(uint)) = value;

    public void WriteInt32(int value) => WriteUInt32((uint)value);

    public void WriteBool(bool value) => WriteUInt32(value ? 1u : 0u);

    /// <summary>Makes room for a number that is known later.</summary>
    /// <returns>Its place, for WriteUInt32At.</returns>
    public nuint ReserveUInt32()
    {
        nuint place = _size;
        WriteUInt32(0);
        return place;
    }

    public void WriteUInt32At(nuint place, uint value) => *(uint*)(_data + place) = value;

    public void WriteGuid(in Guid value) => value.TryWriteBytes(new Span<byte>(Append(16), 16), true, out _);

    /// <summary>Null is written as the empty string.</summary>
    public void WriteString(string? value)
    {
        ReadOnlySpan<char> characters = value;
        byte* target = Append(sizeof(uint) + Filled((nuint)characters.Length * sizeof(char), sizeof(uint)));
        *(uint*)target = (uint)characters.Length;
        characters.CopyTo(new Span<char>(target + sizeof(uint), characters.Length));
    }

    /// <summary>Null is written as no bytes.</summary>
    public void WriteBytes(ReadOnlySpan<byte> bytes)
    {
        WriteUInt32((uint)bytes.Length);
        bytes.CopyTo(new Span<byte>(Append((nuint)bytes.Length), bytes.Length));
    }

    /// <summary>Writes a string that the record must have: null fails as any use of it does.</summary>
    public void WriteRequiredString(string value) => WriteString(value.ToString());

    /// <summary>Refers to a managed object by the next handle.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public void WriteHandle(object? target)
    {
        if (_handleCount == _handleCapacity)
            GrowHandles();
        _handles[_handleCount] = _chain.Add(target);
        ++_handleCount;
    }

    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public void Align(nuint alignment)
    {
        nuint aligned = Filled(_size, alignment);
        Append(aligned - _size);
    }

    /// <summary>Makes room at the end, for the caller to write to.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public byte* Append(nuint count)
    {
        if (count > _capacity - _size)
            Grow(count);
        byte* target = _data + _size;
        _size += count;
        return target;
    }

    /// <summary>Ends a record of a list, and hands over the piece if it is full and the native side takes pieces.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public void EndRecord(Reply* reply)
    {
        ++_recordCount;
        if (IsPieceFull(reply))
            HandOverPiece(reply, _recordCount);
    }

    /// <summary>Whether what was written is to be handed over before more is.</summary>
    [MethodImpl(MethodImplOptions.AggressiveInlining)]
    public bool IsPieceFull(Reply* reply) => _size >= PieceSize && reply->TakePiece != null;

    /// <summary>Hands memory and handles over to the native side, as the only piece or the last one.</summary>
    public void MoveTo(Reply* reply)
    {
        Complete();
        reply->Data = _data;
        reply->Size = _size;
        reply->HandlesTaken = 0;
        _data = null;
        _handleCount = 0;
    }

    /// <summary>MoveTo for a reply that is not a list.</summary>
    public void MoveTo(Reply* reply, uint count)
    {
        _recordCount = count;
        MoveTo(reply);
    }

    public void Dispose()
    {
        for (nuint i = 0; i < _handleCount; ++i)
            HandleTable.Release(_handles[i]);
        _handleCount = 0;
        _chain.Dispose();
        NativeMemory.Free(_handles);
        NativeMemory.Free(_data);
        _handles = null;
        _data = null;
    }

    /// <summary>Frees a reply and the handles in it that the native side has not taken over.</summary>
    public static void Release(Reply* reply)
    {
        byte* data = reply->Data;
        if (data == null)
            return;
        var header = (ReplyHeader*)data;
        long* handles = (long*)(data + header->HandlesOffset);
        for (ulong i = reply->HandlesTaken; i < header->HandleCount; ++i)
            HandleTable.Release(handles[i]);
        NativeMemory.Free(data);
        reply->Data = null;
        reply->Size = 0;
    }

    public static void WriteMessage(string message, Reply* reply)
    {
        using var writer = new ReplyWriter();
        writer.WriteString(message);
        writer.MoveTo(reply, 1);
    }

    private void Complete()
    {
        Align(sizeof(long));
        nuint offset = _size;
        nuint handleBytes = _handleCount * sizeof(long);
        NativeMemory.Copy(_handles, Append(handleBytes), handleBytes);
        *(ReplyHeader*)_data = new ReplyHeader
        {
            RecordCount = _recordCount,
            HandleCount = checked((uint)_handleCount),
            HandlesOffset = offset,
        };
    }

    /// <summary>Hands over what was written as a piece of a longer reply, and begins the next piece.</summary>
    /// <exception cref="OperationCanceledException">The native side refused it.</exception>
    [MethodImpl(MethodImplOptions.NoInlining)]
    public void HandOverPiece(Reply* reply, uint count)
    {
        _recordCount = count;
        Complete();
        reply->Data = _data;
        reply->Size = _size;
        reply->HandlesTaken = 0;
        int refused = reply->TakePiece(reply);
        ulong taken = reply->HandlesTaken;
        reply->Data = null;
        reply->Size = 0;
        for (nuint i = (nuint)taken; i < _handleCount; ++i)
            HandleTable.Release(_handles[i]);
        _size = (nuint)sizeof(ReplyHeader);
        _handleCount = 0;
        _recordCount = 0;
        if (refused != 0)
            throw new OperationCanceledException("The native side refused a piece of the reply.");
    }

    private static nuint Filled(nuint count, nuint alignment) => (count + alignment - 1) & ~(alignment - 1);

    [MethodImpl(MethodImplOptions.NoInlining)]
    private void Grow(nuint count)
    {
        // Each step copies what was written, so there are few of them up to a piece: room that stays empty costs addresses only.
        nuint factor = _capacity < PieceSize ? 8u : 2u;
        nuint grown = Math.Max(checked(_capacity * factor), checked(_size + count));
        _data = (byte*)NativeMemory.Realloc(_data, grown);
        _capacity = grown;
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private void GrowHandles()
    {
        nuint grown = Math.Max(16, checked(_handleCapacity * 2));
        _handles = (long*)NativeMemory.Realloc(_handles, checked(grown * sizeof(long)));
        _handleCapacity = grown;
    }
}
