#include "tests/support/Links.h"

#include <utility>

#ifdef _WIN32
#include <stdexcept>
#include <string>

#include <windows.h>

#include "tests/support/MachineProgramWindows.h"
#endif

namespace Quorvex::Velmora::TestSupport
{

#ifndef _WIN32

Link::Link(const std::filesystem::path& target, std::filesystem::path link) : link(std::move(link))
{
    std::filesystem::create_symlink(target, this->link);
}

Link::~Link()
{
    std::error_code ignored;
    std::filesystem::remove(link, ignored);
}

#else

// Wine's functions cannot make links and remove the target instead of a link, so the programs of the machine do it.
namespace
{

bool isThere(const std::filesystem::path& link)
{
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(link.c_str(), &found);
    return search != INVALID_HANDLE_VALUE && FindClose(search) != 0;
}

} // namespace

Link::Link(const std::filesystem::path& target, std::filesystem::path link) : link(std::move(link))
{
    const std::wstring arguments =
        L"-s \"" + target.generic_wstring() + L"\" \"" + this->link.filename().wstring() + L"\"";
    if (!runOnMachine(L"ln", arguments, this->link.parent_path(), [this] { return isThere(this->link); }))
        throw std::runtime_error("no link could be made: " + this->link.u8string());
}

Link::~Link()
{
    const std::wstring arguments = L"-f \"" + link.filename().wstring() + L"\"";
    runOnMachine(L"rm", arguments, link.parent_path(), [this] { return !isThere(link); });
}

#endif

} // namespace Quorvex::Velmora::TestSupport
