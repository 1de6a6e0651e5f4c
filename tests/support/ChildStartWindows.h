// Starts Windows programs and waits for their end. Internal to ChildProcess.h.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

#include <windows.h>

#include "tests/support/ChildProcess.h"

namespace Quorvex::Velmora::TestSupport
{

[[nodiscard]] std::system_error lastError(const std::string& what);

class Handle
{
public:
    explicit Handle(HANDLE handle = nullptr) : handle(handle) {}
    ~Handle() { close(); }
    Handle(Handle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }

    void close() noexcept
    {
        if (handle != nullptr)
            CloseHandle(handle);
        handle = nullptr;
    }
    [[nodiscard]] HANDLE get() const noexcept { return handle; }

private:
    HANDLE handle;
};

struct Pipe {
    Pipe();
    Handle reader;
    Handle writer;
};

/// The command line that the start-up code of a program splits into the program and its arguments again.
[[nodiscard]] std::wstring commandLineOf(const ChildProgram& program);

[[nodiscard]] std::wstring quotedArgument(std::wstring_view argument);

/// Starts a command line with the environment and the working directory of a program.
[[nodiscard]] Handle start(const ChildProgram& program, std::wstring line, STARTUPINFOW& startup, DWORD flags);

void wait(HANDLE process, const ChildProgram& program, ChildResult& result);

/// Writes until the reader closes the pipe.
void send(const std::string& input, HANDLE to);

/// Reads until the end, or until `wanted` bytes have arrived.
[[nodiscard]] std::string receive(HANDLE from, std::size_t wanted = std::numeric_limits<std::size_t>::max());

} // namespace Quorvex::Velmora::TestSupport
