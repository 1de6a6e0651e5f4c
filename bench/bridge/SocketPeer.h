// The same listing out of another process, packed as the bridge packs it, over a local socket.
#pragma once

#include <cstdint>
#include <vector>

#include "NativeLimit.h"

namespace Quorvex::Velmora::Bench
{

/// Forks the other process, which must not use .NET and does not.
class SocketPeer
{
public:
    explicit SocketPeer(const std::vector<SourceItem>& source);
    SocketPeer(const SocketPeer&) = delete;
    SocketPeer& operator=(const SocketPeer&) = delete;
    ~SocketPeer();

    [[nodiscard]] Common::QVBuffer<TessaportAPI::Item> listing();

private:
    int socket = -1;
    std::vector<std::uint64_t> reply;
};

} // namespace Quorvex::Velmora::Bench
