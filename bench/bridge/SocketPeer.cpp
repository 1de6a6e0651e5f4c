#include "SocketPeer.h"

#include <cstring>
#include <stdexcept>
#include <string>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <velmora/api/UuidAccess.h>
#include <velmora/bridge/conversions/ToNative.h>
#include <velmora/platform/Unicode.h>

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

// As ReplyWriter does it; the other process holds its texts ready in UTF-16, like .NET.
std::string packed(const std::vector<PackedItem>& items)
{
    std::string reply(16, '\0');
    for (const PackedItem& item : items) {
        append(reply, Common::UuidAccess::bytes(item.record.driveId), 16);
        appendNumber(reply, item.record.lastModifiedDate);
        for (const auto* text : {&item.name, &item.relativePath, &item.workspacePath})
            appendNumber(reply, static_cast<std::uint32_t>(text->size()));
        appendNumber(
            reply, std::uint32_t{item.record.isFolder} + 2U * item.record.isInWorkspace + 4U * item.record.isOnServer);
        for (const auto* text : {&item.name, &item.relativePath, &item.workspacePath})
            append(reply, text->data(), text->size() * sizeof(char16_t));
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

bool writeAll(int socket, const void* bytes, std::size_t size)
{
    const auto* position = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t written = write(socket, position, size);
        if (written <= 0)
            return false;
        position += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool readAll(int socket, void* bytes, std::size_t size)
{
    auto* position = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t got = read(socket, position, size);
        if (got <= 0)
            return false;
        position += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

[[noreturn]] void serve(int socket, const std::vector<PackedItem>& items)
{
    char request = 0;
    while (readAll(socket, &request, 1)) {
        const std::string reply = packed(items);
        const std::uint64_t size = reply.size();
        if (!writeAll(socket, &size, sizeof size) || !writeAll(socket, reply.data(), reply.size()))
            break;
    }
    _exit(0);
}

} // namespace

SocketPeer::SocketPeer(const std::vector<SourceItem>& source)
{
    std::vector<PackedItem> items;
    for (const SourceItem& each : source)
        items.push_back({each.record, Common::Unicode::toUtf16(each.name), Common::Unicode::toUtf16(each.relativePath),
            Common::Unicode::toUtf16(each.workspacePath)});
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        throw std::runtime_error("no socket");
    if (fork() == 0) {
        close(ends[0]);
        serve(ends[1], items);
    }
    close(ends[1]);
    socket = ends[0];
}

SocketPeer::~SocketPeer()
{
    close(socket);
    wait(nullptr);
}

Common::QVBuffer<Item> SocketPeer::listing()
{
    static const Tessaport::TessaportEntryPoints table = [] {
        Tessaport::TessaportEntryPoints own{};
        own.releaseHandle = [](Tessaport::VelmoraHandle) {};
        return own;
    }();
    std::uint64_t size = 0;
    if (!writeAll(socket, "?", 1) || !readAll(socket, &size, sizeof size))
        throw std::runtime_error("the other process is gone");
    reply.resize((size + 7) / 8);
    if (!readAll(socket, reply.data(), size))
        throw std::runtime_error("the other process is gone");
    Tessaport::VelmoraReply packedReply{};
    packedReply.data = reinterpret_cast<std::uint8_t*>(reply.data());
    packedReply.size = size;
    Tessaport::ReplyReader reader(packedReply, table);
    Common::QVBuffer<Item> items;
    Tessaport::toNative(reader, reader.count(), items);
    return items;
}

} // namespace Quorvex::Velmora::Bench
