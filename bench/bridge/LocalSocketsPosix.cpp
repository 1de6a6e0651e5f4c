#include "bench/bridge/LocalSockets.h"

#include <stdexcept>

#include <sys/socket.h>
#include <unistd.h>

namespace Quorvex::Velmora::Bench::LocalSockets
{
namespace
{

int descriptor(Socket socket) { return static_cast<int>(socket); }

} // namespace

Socket connectToNewPeer(const std::string& option)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        throw std::runtime_error("no socket");
    const std::string address = std::to_string(ends[1]);
    const char* const program = "/proc/self/exe";
    const pid_t child = fork();
    if (child == 0) {
        ::close(ends[0]);
        execl(program, program, option.c_str(), address.c_str(), nullptr);
        _exit(127);
    }
    ::close(ends[1]);
    if (child < 0)
        throw std::runtime_error("no process");
    return static_cast<Socket>(ends[0]);
}

// The address is the descriptor that was inherited.
Socket connectToStarter(const std::string& address) { return std::stoul(address); }

std::ptrdiff_t send(Socket socket, const void* bytes, std::size_t size)
{
    return ::write(descriptor(socket), bytes, size);
}

std::ptrdiff_t receive(Socket socket, void* bytes, std::size_t size) { return ::read(descriptor(socket), bytes, size); }

void close(Socket socket) { ::close(descriptor(socket)); }

} // namespace Quorvex::Velmora::Bench::LocalSockets
