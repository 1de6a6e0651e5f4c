/// @file
/// Packs replies as the managed half does (see velmora/bridge/boundary/ReplyLayout.h), so that tests can damage them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Quorvex::Velmora::TestSupport
{

/// A packed reply. Its handles get their numbers each time it is handed out.
struct PackedReply {
    std::vector<std::uint8_t> bytes;
    /// Where the handles begin, and which of them are the null object.
    std::size_t handlesOffset = 0;
    std::vector<bool> isNullHandle;

    [[nodiscard]] PackedReply cutTo(std::size_t size) const;
    [[nodiscard]] PackedReply withWordAt(std::size_t offset, std::uint32_t value) const;
    [[nodiscard]] std::uint32_t wordAt(std::size_t offset) const;
};

/// Each member appends one part.
class ReplyBuilder
{
public:
    ReplyBuilder();

    ReplyBuilder& number(std::uint32_t value);
    ReplyBuilder& string(std::u16string_view value);
    ReplyBuilder& uuid();
    /// An item with an id, whose strings and date tell its number.
    ReplyBuilder& item(int number);
    ReplyBuilder& handle();
    ReplyBuilder& nullHandle();

    [[nodiscard]] PackedReply build(std::uint32_t recordCount) const;

private:
    void align(std::size_t alignment);
    void append(const void* data, std::size_t size);

    std::vector<std::uint8_t> bytes;
    std::vector<bool> isNullHandle;
};

} // namespace Quorvex::Velmora::TestSupport
