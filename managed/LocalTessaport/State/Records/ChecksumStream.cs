namespace Quorvex.Tessaport.API.Local;

/// <summary>Passes on what is written to it, and sums it up.</summary>
internal sealed class ChecksumStream : Stream
{
    private readonly Stream _target;
    private Crc32C _sum = new();

    public ChecksumStream(Stream target) => _target = target;

    /// <summary>The checksum of what was written until now.</summary>
    public uint Checksum => _sum.Value;

    public override bool CanRead => false;
    public override bool CanSeek => false;
    public override bool CanWrite => true;
    public override long Length => throw new NotSupportedException();

    public override long Position
    {
        get => throw new NotSupportedException();
        set => throw new NotSupportedException();
    }

    public override void Write(byte[] buffer, int offset, int count) => Write(buffer.AsSpan(offset, count));

    public override void Write(ReadOnlySpan<byte> buffer)
    {
        _sum.Add(buffer);
        _target.Write(buffer);
    }

    public override void Flush() => _target.Flush();

    public override int Read(byte[] buffer, int offset, int count) => throw new NotSupportedException();

    public override long Seek(long offset, SeekOrigin origin) => throw new NotSupportedException();

    public override void SetLength(long value) => throw new NotSupportedException();
}
