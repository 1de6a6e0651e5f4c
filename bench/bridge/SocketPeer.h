// The same listing out of another process, packed as the bridge packs it, over a local socket.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "bench/bridge/LocalConnection.h"
#include "bench/bridge/NativeLimit.h"

namespace Quorvex::Velmora::Bench
{

class SocketPeer
{
public:
    /// Starts the other process, which uses no .NET, and gives it what it is to list.
    explicit SocketPeer(const std::vector<SourceItem>& source);

    [[nodiscard]] Common::QVBuffer<TessaportAPI::Item> listing();

    /// What the other process does.
    /// @return its exit code.
    static int serve(const LocalConnection& connection);

private:
    std::unique_ptr<LocalConnection> connection;
    std::vector<std::uint64_t> reply;
};

} // namespace Quorvex::Velmora::Bench
