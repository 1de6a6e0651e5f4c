#include "tests/support/ReplyBuilder.h"

#include <cstring>
#include <iterator>
#include <numeric>
#include <string>

#include <velmora/bridge/boundary/ReplyLayout.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Tessaport::ItemBlock;
using Tessaport::ReplyHeader;

constexpr std::uint32_t AllFlags = Tessaport::FolderFlag | Tessaport::InWorkspaceFlag | Tessaport::OnServerFlag;

template <class Value>
void put(std::vector<std::uint8_t>& bytes, std::size_t offset, Value value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

} // namespace

PackedReply PackedReply::cutTo(std::size_t size) const
{
    PackedReply cut = *this;
    cut.bytes.resize(size);
    return cut;
}

PackedReply PackedReply::withWordAt(std::size_t offset, std::uint32_t value) const
{
    PackedReply changed = *this;
    put(changed.bytes, offset, value);
    return changed;
}

std::uint32_t PackedReply::wordAt(std::size_t offset) const
{
    std::uint32_t value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

ReplyBuilder::ReplyBuilder() : bytes(sizeof(ReplyHeader)) {}

ReplyBuilder& ReplyBuilder::number(std::uint32_t value)
{
    align(sizeof value);
    append(&value, sizeof value);
    return *this;
}

ReplyBuilder& ReplyBuilder::string(std::u16string_view value)
{
    number(static_cast<std::uint32_t>(value.size()));
    append(value.data(), value.size() * sizeof(char16_t));
    align(sizeof(std::uint32_t));
    return *this;
}

ReplyBuilder& ReplyBuilder::uuid()
{
    align(sizeof(std::uint32_t));
    for (std::uint8_t byte = 1; byte <= 16; ++byte)
        append(&byte, 1);
    return *this;
}

ReplyBuilder& ReplyBuilder::item(int number)
{
    const std::u16string name = u"item " + std::u16string(1, static_cast<char16_t>(u'0' + number % 10));
    const std::u16string path = u"D:\\Drive\\" + name;
    ItemBlock block{};
    std::iota(std::begin(block.driveId), std::end(block.driveId), std::uint8_t{1});
    block.lastModified = 1'700'000'000 + number;
    block.nameLength = block.relativePathLength = static_cast<std::uint32_t>(name.size());
    block.workspacePathLength = static_cast<std::uint32_t>(path.size());
    block.flags = AllFlags;
    align(Tessaport::ReplyAlignment);
    append(&block, sizeof block);
    for (const std::u16string& part : {name, name, path})
        append(part.data(), part.size() * sizeof(char16_t));
    align(Tessaport::ReplyAlignment);
    return handle();
}

ReplyBuilder& ReplyBuilder::handle()
{
    isNullHandle.push_back(false);
    return *this;
}

ReplyBuilder& ReplyBuilder::nullHandle()
{
    isNullHandle.push_back(true);
    return *this;
}

PackedReply ReplyBuilder::build(std::uint32_t recordCount) const
{
    ReplyBuilder complete = *this;
    complete.align(Tessaport::ReplyAlignment);
    PackedReply reply{complete.bytes, complete.bytes.size(), isNullHandle};
    put(reply.bytes, 0, ReplyHeader{recordCount, static_cast<std::uint32_t>(isNullHandle.size()), reply.handlesOffset});
    reply.bytes.resize(reply.handlesOffset + isNullHandle.size() * sizeof(std::int64_t));
    return reply;
}

void ReplyBuilder::align(std::size_t alignment)
{
    bytes.resize((bytes.size() + alignment - 1) / alignment * alignment);
}

void ReplyBuilder::append(const void* data, std::size_t size)
{
    const auto* const begin = static_cast<const std::uint8_t*>(data);
    bytes.insert(bytes.end(), begin, begin + size);
}

} // namespace Quorvex::Velmora::TestSupport
