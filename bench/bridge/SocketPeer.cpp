#include "bench/bridge/SocketPeer.h"

#include <cstring>
#include <stdexcept>
#include <string>

#include <velmora/api/UuidAccess.h>
#include <velmora/bridge/conversions/ToNative.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Bench
{
namespace
{

using TessaportAPI::Item;

void append(std::string& target, const void* bytes, std::size_t size)
{
    target.append(static_cast<const char*>(bytes), size);
}

template <class Number>
void appendNumber(std::string& target, Number number)
{
    append(target, &number, sizeof number);
}

void pad(std::string& target) { target.append((8 - target.size() % 8) % 8, '\0'); }

struct PackedItem {
    Item record;
    std::u16string name, relativePath, workspacePath;
};

// As ReplyWriter does it; the other process keeps its strings in UTF-16, like .NET.
std::string packed(const std::vector<PackedItem>& items)
{
    std::string reply(16, '\0');
    for (const PackedItem& item : items) {
        append(reply, Common::UuidAccess::bytes(item.record.driveId), 16);
        appendNumber(reply, item.record.lastModifiedDate);
        for (const auto* string : {&item.name, &item.relativePath, &item.workspacePath})
            appendNumber(reply, static_cast<std::uint32_t>(string->size()));
        appendNumber(
            reply, std::uint32_t{item.record.isFolder} + 2U * item.record.isInWorkspace + 4U * item.record.isOnServer);
        for (const auto* string : {&item.name, &item.relativePath, &item.workspacePath})
            append(reply, string->data(), string->size() * sizeof(char16_t));
        pad(reply);
    }
    const std::uint64_t offset = reply.size();
    for (std::uint64_t i = 1; i <= items.size(); ++i)
        appendNumber(reply, i);
    const auto count = static_cast<std::uint32_t>(items.size());
    std::memcpy(&reply[0], &count, 4);
    std::memcpy(&reply[4], &count, 4);
    std::memcpy(&reply[8], &offset, 8);
    return reply;
}

std::vector<PackedItem> packable(const std::vector<SourceItem>& source)
{
    std::vector<PackedItem> items;
    items.reserve(source.size());
    for (const SourceItem& each : source)
        items.push_back({each.record, Common::Unicode::toUtf16(each.name), Common::Unicode::toUtf16(each.relativePath),
            Common::Unicode::toUtf16(each.workspacePath)});
    return items;
}

void send(const LocalConnection& connection, const std::string& reply)
{
    const std::uint64_t size = reply.size();
    if (!connection.write(&size, sizeof size) || !connection.write(reply.data(), reply.size()))
        throw std::runtime_error("the other process is gone");
}

Common::QVBuffer<Item> receive(const LocalConnection& connection, std::vector<std::uint64_t>& storage)
{
    static const Tessaport::TessaportEntryPoints table = [] {
        Tessaport::TessaportEntryPoints own{};
        own.releaseHandle = [](Tessaport::VelmoraHandle) {};
        return own;
    }();
    std::uint64_t size = 0;
    if (!connection.read(&size, sizeof size))
        throw std::runtime_error("the other process is gone");
    storage.resize((size + 7) / 8);
    if (!connection.read(storage.data(), size))
        throw std::runtime_error("the other process is gone");
    Tessaport::VelmoraReply reply{};
    reply.data = reinterpret_cast<std::uint8_t*>(storage.data());
    reply.size = size;
    Tessaport::RecordReader reader(reply, table);
    Common::QVBuffer<Item> items;
    Tessaport::toNative(reader, reader.count(), items);
    return items;
}

} // namespace

SocketPeer::SocketPeer(const std::vector<SourceItem>& source) : connection(LocalConnection::toNewPeer())
{
    send(*connection, packed(packable(source)));
}

Common::QVBuffer<Item> SocketPeer::listing()
{
    if (!connection->write("?", 1))
        throw std::runtime_error("the other process is gone");
    return receive(*connection, reply);
}

int SocketPeer::serve(const LocalConnection& connection)
{
    std::vector<std::uint64_t> storage;
    const auto items = packable(sourceOf(receive(connection, storage)));
    char request = 0;
    while (connection.read(&request, 1))
        send(connection, packed(items));
    return 0;
}

} // namespace Quorvex::Velmora::Bench
