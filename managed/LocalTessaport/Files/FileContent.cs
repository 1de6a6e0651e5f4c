using System;
using System.IO;
using System.Security.Cryptography;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Looks at what is in files.</summary>
internal static class FileContent
{
    private const int BlockSize = 128 * 1024;

    public static string Hash(string path)
    {
        using var stream = AtomicFile.OpenForReading(path);
        return Convert.ToHexString(SHA256.HashData(stream)).ToLowerInvariant();
    }

    public static bool AreEqual(string one, string other)
    {
        using var a = AtomicFile.OpenForReading(one);
        using var b = AtomicFile.OpenForReading(other);
        if (a.Length != b.Length)
            return false;
        var blockA = new byte[BlockSize];
        var blockB = new byte[BlockSize];
        while (true)
        {
            var countA = a.ReadAtLeast(blockA, BlockSize, throwOnEndOfStream: false);
            var countB = b.ReadAtLeast(blockB, BlockSize, throwOnEndOfStream: false);
            if (!blockA.AsSpan(0, countA).SequenceEqual(blockB.AsSpan(0, countB)))
                return false;
            if (countA == 0)
                return true;
        }
    }
}
