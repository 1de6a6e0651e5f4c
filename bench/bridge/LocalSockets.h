// What the platforms have for two processes of one machine that talk to each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Quorvex::Velmora::Bench::LocalSockets
{

/// A descriptor, or what Windows has for one.
using Socket = std::uintptr_t;

/// Starts this program again, with the option and an address as its arguments, and waits for nothing but its
/// connection.
/// @throws std::runtime_error when there is no socket or no process.
[[nodiscard]] Socket connectToNewPeer(const std::string& option);

/// The other end, for the program that was started with the address.
/// @throws std::runtime_error if no one listens there.
[[nodiscard]] Socket connectToStarter(const std::string& address);

/// How many bytes were sent or received; not above 0 when the other end is closed.
[[nodiscard]] std::ptrdiff_t send(Socket socket, const void* bytes, std::size_t size);
[[nodiscard]] std::ptrdiff_t receive(Socket socket, void* bytes, std::size_t size);

void close(Socket socket);

} // namespace Quorvex::Velmora::Bench::LocalSockets
