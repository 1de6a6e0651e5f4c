#include "tests/support/ChildStartWindows.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cwchar>
#include <map>
#include <string_view>

// psapi.h needs windows.h before it.
#include <psapi.h>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Clock = std::chrono::steady_clock;

struct LessIgnoringCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const { return _wcsicmp(a.c_str(), b.c_str()) < 0; }
};

// Each "name=value" with a terminating zero, in the order of the names, and one more zero.
std::wstring environmentOf(const ChildProgram& program)
{
    std::map<std::wstring, std::wstring, LessIgnoringCase> variables;
    wchar_t* const inherited = GetEnvironmentStringsW();
    for (const wchar_t* entry = inherited; *entry != L'\0'; entry += std::wcslen(entry) + 1) {
        const std::wstring_view text = entry;
        const std::size_t separator = text.find(L'=', 1); // The drives' current directories have names such as "=C:".
        variables[std::wstring(text.substr(0, separator))] = text.substr(separator + 1);
    }
    FreeEnvironmentStringsW(inherited);
    for (const auto& [name, value] : program.environment) {
        if (value.empty())
            variables.erase(Common::Unicode::fromUtf8(name));
        else
            variables[Common::Unicode::fromUtf8(name)] = Common::Unicode::fromUtf8(value);
    }
    std::wstring block;
    for (const auto& [name, value] : variables)
        block += name + L'=' + value + L'\0';
    return block + L'\0';
}

// Some systems do not report it for a process that has ended.
void updatePeakMemory(HANDLE process, ChildResult& result)
{
    PROCESS_MEMORY_COUNTERS counters{};
    if (K32GetProcessMemoryInfo(process, &counters, sizeof counters) != 0)
        result.peakMemory = std::max<std::size_t>(result.peakMemory, counters.PeakWorkingSetSize);
}

DWORD millisecondsUntil(Clock::time_point deadline)
{
    constexpr std::chrono::milliseconds longest{10};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    return static_cast<DWORD>(std::clamp(left, std::chrono::milliseconds(0), longest).count());
}

} // namespace

std::system_error lastError(const std::string& what)
{
    return std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

Pipe::Pipe()
{
    HANDLE readerEnd = nullptr;
    HANDLE writerEnd = nullptr;
    if (CreatePipe(&readerEnd, &writerEnd, nullptr, 0) == 0)
        throw lastError("no pipe could be made");
    reader = Handle(readerEnd);
    writer = Handle(writerEnd);
}

std::wstring quotedArgument(std::wstring_view argument)
{
    std::wstring result = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"')
            result.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        result += c;
    }
    result.append(backslashes, L'\\');
    return result + L'"';
}

std::wstring commandLineOf(const ChildProgram& program)
{
    std::wstring line = quotedArgument(program.program.native());
    for (const std::string& argument : program.arguments)
        line += L' ' + quotedArgument(Common::Unicode::fromUtf8(argument));
    return line;
}

Handle start(const ChildProgram& program, std::wstring line, STARTUPINFOW& startup, DWORD flags)
{
    PROCESS_INFORMATION process{};
    std::wstring environment = environmentOf(program);
    const wchar_t* const folder = program.currentFolder.empty() ? nullptr : program.currentFolder.c_str();
    const BOOL inherits = startup.hStdOutput != nullptr ? TRUE : FALSE;
    const auto create = [&] {
        return CreateProcessW(nullptr, line.data(), nullptr, nullptr, inherits, flags | CREATE_UNICODE_ENVIRONMENT,
                   environment.data(), folder, &startup, &process) != 0;
    };
    // Wine occasionally loses a process before it runs any code of the program.
    bool created = create();
    for (int attempt = 0; attempt < 3 && !created && GetLastError() == ERROR_INTERNAL_ERROR; ++attempt)
        created = create();
    if (!created)
        throw lastError("'" + program.program.u8string() + "' could not be started");
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

void wait(HANDLE process, const ChildProgram& program, ChildResult& result)
{
    const auto deadline = Clock::now() + program.timeLimit;
    while (WaitForSingleObject(process, millisecondsUntil(deadline)) == WAIT_TIMEOUT) {
        updatePeakMemory(process, result);
        // A process that has ended in the meantime cannot be killed.
        if (Clock::now() >= deadline && TerminateProcess(process, 1) != 0) {
            result.timedOut = true;
            WaitForSingleObject(process, INFINITE);
        }
    }
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    result.exitCode = static_cast<int>(code);
}

void send(const std::string& input, HANDLE to)
{
    for (std::size_t sent = 0; sent < input.size();) {
        DWORD count = 0;
        const auto left = static_cast<DWORD>(input.size() - sent);
        if (WriteFile(to, input.data() + sent, left, &count, nullptr) == 0)
            return;
        sent += count;
    }
}

std::string receive(HANDLE from, std::size_t wanted)
{
    std::string received;
    std::array<char, 4096> bytes{};
    DWORD count = 0;
    while (received.size() < wanted && ReadFile(from, bytes.data(), DWORD{bytes.size()}, &count, nullptr) != 0)
        received.append(bytes.data(), count);
    return received;
}

} // namespace Quorvex::Velmora::TestSupport
