namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads the lines of a stream one after the other, however long they are.</summary>
internal sealed class LineReader
{
    private readonly Stream _stream;
    private byte[] _block = new byte[64 * 1024];
    private int _start;
    private int _end;

    public LineReader(Stream stream) => _stream = stream;

    /// <summary>The next line without its end, valid until the next call; false after the last one.</summary>
    public bool TryRead(out ReadOnlyMemory<byte> line)
    {
        for (var searched = 0; ;)
        {
            var length = _block.AsSpan(_start + searched, _end - _start - searched).IndexOf((byte)'\n');
            if (length >= 0)
            {
                line = _block.AsMemory(_start, searched + length);
                _start += searched + length + 1;
                return true;
            }
            searched = _end - _start;
            if (!ReadMore())
                break;
        }
        line = _block.AsMemory(_start, _end - _start);
        _start = _end;
        return line.Length > 0;
    }

    private bool ReadMore()
    {
        if (_start > 0)
        {
            _block.AsSpan(_start, _end - _start).CopyTo(_block);
            (_start, _end) = (0, _end - _start);
        }
        if (_end == _block.Length)
            Array.Resize(ref _block, 2 * _block.Length);
        var count = _stream.Read(_block, _end, _block.Length - _end);
        _end += count;
        return count > 0;
    }
}
