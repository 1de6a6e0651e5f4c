#include "Links.h"

#include <utility>

#ifdef _WIN32
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include <windows.h>
#endif

namespace Quorvex::Velmora::TestSupport
{

#ifndef _WIN32

Link::Link(const std::filesystem::path& target, std::filesystem::path link) : m_link(std::move(link))
{
    std::filesystem::create_symlink(target, m_link);
}

Link::~Link()
{
    std::error_code ignored;
    std::filesystem::remove(m_link, ignored);
}

#else

// Wine's own functions make no links, and remove what a link leads to; the machine's programs do better.
namespace
{

bool isThere(const std::filesystem::path& link)
{
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(link.c_str(), &found);
    return search != INVALID_HANDLE_VALUE && FindClose(search) != 0;
}

// A Windows program cannot wait for one of the machine's, but for what it does.
void runUntil(const std::filesystem::path& link, bool there, const wchar_t* program, std::wstring arguments)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    arguments = program + arguments + L" \"" + link.filename().wstring() + L"\"";
    if (CreateProcessW(program, arguments.data(), nullptr, nullptr, FALSE, 0, nullptr, link.parent_path().c_str(),
            &startup, &process) == 0)
        return;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int i = 0; i < 1'000 && isThere(link) != there; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

} // namespace

Link::Link(const std::filesystem::path& target, std::filesystem::path link) : m_link(std::move(link))
{
    runUntil(m_link, true, L"Z:\\bin\\ln", L" -s \"" + target.generic_wstring() + L"\"");
    if (!isThere(m_link))
        throw std::runtime_error("no link could be made: " + m_link.u8string());
}

Link::~Link() { runUntil(m_link, false, L"Z:\\bin\\rm", L" -f"); }

#endif

} // namespace Quorvex::Velmora::TestSupport
