using System.Security.Cryptography;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Copies the content of one file to others in one pass, keeps its holes, and hashes it.</summary>
internal sealed class FileCopier
{
    private const int BlockSize = 128 * 1024;

    private readonly OpenedFile _input;
    private readonly List<StagedFile> _outputs;
    private readonly IncrementalHash _hash;

    private FileCopier(OpenedFile input, IReadOnlyList<StagedFile> outputs, IncrementalHash hash)
    {
        _input = input;
        _outputs = [];
        // The system shares the blocks of a file where it can; the file is then only read for its hash.
        foreach (var output in outputs)
        {
            if (!FileHandle.TryClone(input, output.Handle))
                _outputs.Add(output);
        }
        _hash = hash;
    }

    private long Size => _input.Entry.Size;

    /// <summary>Copies as many bytes as the file had when it was opened, even if it grows, and returns their SHA-256.</summary>
    public static string Copy(OpenedFile input, IReadOnlyList<StagedFile> outputs)
    {
        using var hash = IncrementalHash.CreateHash(HashAlgorithmName.SHA256);
        new FileCopier(input, outputs, hash).CopyAll();
        return FileContent.ToText(hash);
    }

    private void CopyAll()
    {
        using var block = new RentedBlock((int)Math.Clamp(Size, 1, BlockSize));
        long written = 0;
        for (long at = 0; at < Size;)
        {
            var (start, end) = FileHandle.NextData(_input, at);
            HashZeros(block.Span, start - at);
            CopyData(block.Span, start, end);
            if (end > start)
                written = end;
            at = end;
        }
        if (written == Size)
            return;
        foreach (var output in _outputs)
            RandomAccess.SetLength(output.Handle, Size);
    }

    private void HashZeros(Span<byte> block, long count)
    {
        if (count == 0)
            return;
        block.Clear();
        for (; count > 0; count -= block.Length)
            _hash.AppendData(block[..(int)Math.Min(count, block.Length)]);
    }

    private void CopyData(Span<byte> block, long start, long end)
    {
        while (start < end)
        {
            var count = _input.Read(block[..(int)Math.Min(block.Length, end - start)], start);
            // The file is shorter by now; the later comparison with its first properties detects that.
            if (count == 0)
                return;
            _hash.AppendData(block[..count]);
            foreach (var output in _outputs)
                output.Write(block[..count], start);
            start += count;
        }
    }
}
