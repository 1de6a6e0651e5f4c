// usage: velmora_on_console COMMAND LINE
// Runs a command line with its standard streams on the console of this program, wherever the streams of this program
// lead, and exits with its exit code.
#include <cwchar>
#include <string>

#include <windows.h>

namespace
{

constexpr int Failed = 125;

HANDLE openConsole(const wchar_t* name)
{
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(
        name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0, nullptr);
}

// The command line after the quoted name of this program.
std::wstring givenCommandLine()
{
    const std::wstring line = GetCommandLineW();
    const std::size_t start = line.find_first_not_of(L' ', line.find(L'"', 1) + 1);
    return start == std::wstring::npos ? std::wstring() : line.substr(start);
}

} // namespace

int wmain()
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = openConsole(L"CONIN$");
    startup.hStdOutput = openConsole(L"CONOUT$");
    startup.hStdError = startup.hStdOutput;
    std::wstring line = givenCommandLine();
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process) == 0)
        return Failed;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = Failed;
    GetExitCodeProcess(process.hProcess, &code);
    return static_cast<int>(code);
}
