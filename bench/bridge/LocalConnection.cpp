#include "bench/bridge/LocalConnection.h"

#include <string_view>

namespace Quorvex::Velmora::Bench
{
namespace
{

// Followed by the address that this process is to be reached at.
constexpr const char* PeerOption = "--peer";

} // namespace

std::unique_ptr<LocalConnection> LocalConnection::toNewPeer()
{
    return std::make_unique<LocalConnection>(LocalSockets::connectToNewPeer(PeerOption));
}

std::unique_ptr<LocalConnection> LocalConnection::ofPeer(int argc, char** argv)
{
    if (argc != 3 || std::string_view(argv[1]) != PeerOption)
        return nullptr;
    return std::make_unique<LocalConnection>(LocalSockets::connectToStarter(argv[2]));
}

bool LocalConnection::write(const void* bytes, std::size_t size) const
{
    const auto* position = static_cast<const char*>(bytes);
    while (size > 0) {
        const std::ptrdiff_t written = LocalSockets::send(socket, position, size);
        if (written <= 0)
            return false;
        position += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool LocalConnection::read(void* bytes, std::size_t size) const
{
    auto* position = static_cast<char*>(bytes);
    while (size > 0) {
        const std::ptrdiff_t got = LocalSockets::receive(socket, position, size);
        if (got <= 0)
            return false;
        position += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

} // namespace Quorvex::Velmora::Bench
