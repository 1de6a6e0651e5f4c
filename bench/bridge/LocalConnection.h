// A connection to another process of this machine: the same program, started again.
#pragma once

#include <cstddef>
#include <memory>

#include "bench/bridge/LocalSockets.h"

namespace Quorvex::Velmora::Bench
{

class LocalConnection
{
public:
    /// Starts this program again, as the peer of this process.
    /// @throws std::runtime_error when there is no socket or no process.
    [[nodiscard]] static std::unique_ptr<LocalConnection> toNewPeer();

    /// The connection to the process that has started this one as its peer; null when none has.
    [[nodiscard]] static std::unique_ptr<LocalConnection> ofPeer(int argc, char** argv);

    explicit LocalConnection(LocalSockets::Socket socket) : socket(socket) {}
    LocalConnection(const LocalConnection&) = delete;
    LocalConnection& operator=(const LocalConnection&) = delete;
    ~LocalConnection() { LocalSockets::close(socket); }

    /// False when the other process is gone.
    [[nodiscard]] bool write(const void* bytes, std::size_t size) const;
    [[nodiscard]] bool read(void* bytes, std::size_t size) const;

private:
    LocalSockets::Socket socket;
};

} // namespace Quorvex::Velmora::Bench
