#include "tests/support/MachineProgramWindows.h"

#include <chrono>
#include <thread>

#include <windows.h>

namespace Quorvex::Velmora::TestSupport
{

bool runOnMachine(const std::wstring& program, const std::wstring& arguments, const std::filesystem::path& folder,
    const std::function<bool()>& hasHappened)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const std::wstring file = L"Z:\\bin\\" + program;
    std::wstring line = program + L' ' + arguments;
    if (CreateProcessW(
            file.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &startup, &process) == 0)
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int i = 0; i < 1'000; ++i) {
        if (hasHappened())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace Quorvex::Velmora::TestSupport
