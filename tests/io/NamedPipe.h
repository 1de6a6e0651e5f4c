// A pipe that a source opens by its path.
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

/// The writing end of a pipe.
class NamedPipe
{
public:
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    [[nodiscard]] const std::wstring& path() const noexcept { return m_path; }

#ifdef _WIN32
    NamedPipe()
    {
        static std::atomic<unsigned> counter{0};
        m_path = L"\\\\.\\pipe\\velmora-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(counter++);
        m_pipe = CreateNamedPipeW(
            m_path.c_str(), PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE | PIPE_WAIT, 1, 4096, 4096, 0, nullptr);
    }
    ~NamedPipe() { close(); }

    /// Waits for a reader and writes. A pipe that cannot be written to shows at its reader.
    void write(const std::string& bytes)
    {
        ConnectNamedPipe(m_pipe, nullptr);
        DWORD written = 0;
        WriteFile(m_pipe, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }

    /// Ends what can be read, once the reader has read it.
    void close()
    {
        if (m_pipe == INVALID_HANDLE_VALUE)
            return;
        FlushFileBuffers(m_pipe);
        CloseHandle(m_pipe);
        m_pipe = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE m_pipe;
#else
    NamedPipe() : m_path(m_folder.file(L"pipe")) { mkfifo(TestSupport::toPath(m_path).c_str(), S_IRUSR | S_IWUSR); }
    ~NamedPipe() = default;

    /// Waits for a reader and writes. A pipe that cannot be written to shows at its reader.
    void write(const std::string& bytes)
    {
        if (!m_stream.is_open())
            m_stream.open(TestSupport::toPath(m_path), std::ios::binary);
        m_stream << bytes << std::flush;
    }

    /// Ends what can be read.
    void close() { m_stream.close(); }

private:
    TestSupport::TemporaryFolder m_folder;
    std::ofstream m_stream;
#endif
    std::wstring m_path;
};

} // namespace Quorvex::Velmora::IO
