/// @file
/// How replies are packed, as managed/Velmora.Bridge/Boundary/ReplyLayout.cs has it for the writing side: a header, the
/// records, and the handles in the order in which the records refer to them. docs/design.md has a picture.
#pragma once

#include <cstdint>

namespace Quorvex::Velmora::Tessaport
{

struct ReplyHeader {
    std::uint32_t recordCount;
    std::uint32_t handleCount;
    std::uint64_t handlesOffset;
};
static_assert(sizeof(ReplyHeader) == 16);

/// Replies, and the handles in them, begin at a multiple of this.
constexpr std::uint64_t ReplyAlignment = 8;

/// What an item begins with, at a multiple of ReplyAlignment. The UTF-16 of its three strings follows without gaps.
struct ItemBlock {
    std::uint8_t driveId[16];
    std::int64_t lastModified;
    std::uint32_t nameLength;
    std::uint32_t relativePathLength;
    std::uint32_t workspacePathLength;
    std::uint32_t flags;
};
static_assert(sizeof(ItemBlock) == 40);

/// Bits of ItemBlock::flags.
constexpr std::uint32_t FolderFlag = 1;
constexpr std::uint32_t InWorkspaceFlag = 2;
constexpr std::uint32_t OnServerFlag = 4;

} // namespace Quorvex::Velmora::Tessaport
