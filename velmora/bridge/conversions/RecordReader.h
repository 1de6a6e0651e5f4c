#pragma once

#include <cstdint>

#include <velmora/api/TextPool.h>
#include <velmora/bridge/boundary/ReplyReader.h>

namespace Quorvex::Velmora::Tessaport
{

/// Reads the records of one reply, and has the memory of the strings that are made from them.
class RecordReader : public ReplyReader
{
public:
    using ReplyReader::ReplyReader;

    [[nodiscard]] Common::TextPool& texts() noexcept { return pool; }

    /// Lets the strings of the next `count` records share memory. The count is untrusted.
    void expectTexts(std::uint32_t count) noexcept
    {
        // What a record needs beside its characters.
        constexpr std::uint64_t RecordSize = 256;
        const std::uint64_t characters = bytesLeft() / sizeof(char16_t);
        pool.expect(count < 2 ? 0 : characters * sizeof(wchar_t) + count * RecordSize);
    }

private:
    Common::TextPool pool;
};

} // namespace Quorvex::Velmora::Tessaport
