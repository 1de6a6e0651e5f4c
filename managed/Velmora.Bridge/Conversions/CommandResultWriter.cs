namespace Velmora.Bridge.Conversions;

/// <summary>
/// Writes the result of a command. Each piece of a long one is a result of its own, with the same outcome and the next items.
/// </summary>
internal unsafe ref struct CommandResultWriter
{
    private const int Lists = 3;

    private readonly ReplyWriter _writer;
    private readonly Reply* _reply;
    private readonly bool _isSuccess;
    private nuint _place;
    private uint _count;

    private CommandResultWriter(ReplyWriter writer, bool isSuccess, Reply* reply)
    {
        _writer = writer;
        _reply = reply;
        _isSuccess = isSuccess;
    }

    public static void Write(ReplyWriter writer, CommandResult result, Reply* reply)
    {
        var pieces = new CommandResultWriter(writer, result.IsSuccess, reply);
        writer.WriteBool(pieces._isSuccess);
        pieces.WriteItems(0, result.ItemsCreated);
        pieces.WriteItems(1, result.ItemsDeleted);
        pieces.WriteItems(2, result.ItemsUpdated);
    }

    private void WriteItems(int list, IEnumerable<Item>? items)
    {
        BeginList();
        foreach (Item item in items ?? Array.Empty<Item>())
        {
            if (_writer.IsPieceFull(_reply))
                BeginPiece(list);
            ItemWriter.WriteItem(_writer, item);
            ++_count;
        }
        EndList();
    }

    private void BeginPiece(int list)
    {
        EndList();
        WriteEmptyLists(Lists - 1 - list);
        _writer.HandOverPiece(_reply, 1);
        _writer.WriteBool(_isSuccess);
        WriteEmptyLists(list);
        BeginList();
    }

    // The count is written after the items, because a list is enumerated only once.
    private void BeginList()
    {
        _place = _writer.ReserveUInt32();
        _count = 0;
    }

    private readonly void EndList() => _writer.WriteUInt32At(_place, _count);

    private readonly void WriteEmptyLists(int count)
    {
        for (int i = 0; i < count; ++i)
            _writer.WriteUInt32(0);
    }
}
