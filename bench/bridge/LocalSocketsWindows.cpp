#include "bench/bridge/LocalSockets.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <vector>

#include <windows.h>
#include <winsock2.h>

namespace Quorvex::Velmora::Bench::LocalSockets
{
namespace
{

void require(bool succeeded)
{
    if (!succeeded)
        throw std::runtime_error("no connection within this machine");
}

SOCKET newSocket()
{
    WSADATA data;
    require(WSAStartup(MAKEWORD(2, 2), &data) == 0);
    const SOCKET socket = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    require(socket != INVALID_SOCKET);
    return socket;
}

// Port 0 selects a free port.
sockaddr_in ownMachine(std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

std::uint16_t listenOnAnyPort(SOCKET listener)
{
    sockaddr_in address = ownMachine(0);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    int size = sizeof address;
    require(
        bind(listener, generic, size) == 0 && getsockname(listener, generic, &size) == 0 && listen(listener, 1) == 0);
    return ntohs(address.sin_port);
}

std::wstring pathOfThisProgram()
{
    std::vector<wchar_t> path(32768);
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

int limited(std::size_t size)
{
    return static_cast<int>(std::min(size, static_cast<std::size_t>(std::numeric_limits<int>::max())));
}

// The arguments have no blanks.
void startThisProgram(const std::string& arguments)
{
    const std::wstring program = pathOfThisProgram();
    std::wstring line = L'"' + program + L"\" " + std::wstring(arguments.begin(), arguments.end());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(
            program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process) == 0)
        throw std::runtime_error("no process");
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

} // namespace

Socket connectToNewPeer(const std::string& option)
{
    const SOCKET listener = newSocket();
    startThisProgram(option + ' ' + std::to_string(listenOnAnyPort(listener)));
    const SOCKET connection = accept(listener, nullptr, nullptr);
    closesocket(listener);
    require(connection != INVALID_SOCKET);
    return static_cast<Socket>(connection);
}

// The address is a port of this machine.
Socket connectToStarter(const std::string& address)
{
    const sockaddr_in starter = ownMachine(static_cast<std::uint16_t>(std::stoul(address)));
    const SOCKET connection = newSocket();
    require(connect(connection, reinterpret_cast<const sockaddr*>(&starter), sizeof starter) == 0);
    return static_cast<Socket>(connection);
}

std::ptrdiff_t send(Socket socket, const void* bytes, std::size_t size)
{
    return ::send(static_cast<SOCKET>(socket), static_cast<const char*>(bytes), limited(size), 0);
}

std::ptrdiff_t receive(Socket socket, void* bytes, std::size_t size)
{
    return ::recv(static_cast<SOCKET>(socket), static_cast<char*>(bytes), limited(size), 0);
}

void close(Socket socket) { closesocket(static_cast<SOCKET>(socket)); }

} // namespace Quorvex::Velmora::Bench::LocalSockets
