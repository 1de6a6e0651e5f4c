#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/stat.h>
#endif

#include <atomic>
#include <fstream>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{

/// A pipe that a source can open by its path. The object is its writing end.
class NamedPipe
{
public:
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    [[nodiscard]] const std::wstring& path() const noexcept { return fullPath; }

#ifdef _WIN32
    NamedPipe()
    {
        static std::atomic<unsigned> counter{0};
        fullPath =
            L"\\\\.\\pipe\\velmora-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(counter++);
        pipe = CreateNamedPipeW(
            fullPath.c_str(), PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE | PIPE_WAIT, 1, 4096, 4096, 0, nullptr);
    }
    ~NamedPipe() { close(); }

    /// Waits for a reader, then writes. If that is impossible, the reader fails.
    void write(const std::string& bytes)
    {
        ConnectNamedPipe(pipe, nullptr);
        DWORD written = 0;
        WriteFile(pipe, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }

    /// Waits until everything was read, then ends the pipe.
    void close()
    {
        if (pipe == INVALID_HANDLE_VALUE)
            return;
        FlushFileBuffers(pipe);
        CloseHandle(pipe);
        pipe = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE pipe;
#else
    NamedPipe() : fullPath(folder.file(L"pipe")) { mkfifo(TestSupport::toPath(fullPath).c_str(), S_IRUSR | S_IWUSR); }
    ~NamedPipe() = default;

    /// Waits for a reader, then writes. If that is impossible, the reader fails.
    void write(const std::string& bytes)
    {
        if (!stream.is_open())
            stream.open(TestSupport::toPath(fullPath), std::ios::binary);
        stream << bytes << std::flush;
    }

    /// Ends the pipe.
    void close() { stream.close(); }

private:
    TestSupport::TemporaryFolder folder;
    std::ofstream stream;
#endif
    std::wstring fullPath;
};

} // namespace Quorvex::Velmora::IO
