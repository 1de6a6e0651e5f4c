#include "ChildProcess.h"

#include <algorithm>
#include <cwchar>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <windows.h>

#include <velmora/platform/NativePath.h>

#include "TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

std::system_error lastError(const char* what)
{
    return std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    ~Handle() { CloseHandle(m_handle); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] HANDLE get() const noexcept { return m_handle; }

private:
    HANDLE m_handle;
};

HANDLE openForChild(const wchar_t* path, DWORD access, DWORD disposition)
{
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE handle = CreateFileW(
        path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw lastError("a stream of a child process could not be opened");
    return handle;
}

// Quoted so that a program's start-up code takes it apart into the same argument.
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

struct LessIgnoringCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const { return _wcsicmp(a.c_str(), b.c_str()) < 0; }
};

// Each "name=value" with a zero behind it, in the order of the names, and one more zero.
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

HANDLE start(const ChildProgram& program, HANDLE input, HANDLE output, HANDLE errors)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = errors;
    PROCESS_INFORMATION process{};
    std::wstring line = commandLineOf(program);
    std::wstring environment = environmentOf(program);
    const wchar_t* const folder = program.currentFolder.empty() ? nullptr : program.currentFolder.c_str();
    if (CreateProcessW(program.program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
            environment.data(), folder, &startup, &process) == 0)
        throw lastError("a program could not be started");
    CloseHandle(process.hThread);
    return process.hProcess;
}

void wait(const ChildProgram& program, HANDLE process, ChildResult& result)
{
    const auto limit = std::chrono::duration_cast<std::chrono::milliseconds>(program.timeLimit).count();
    result.timedOut = WaitForSingleObject(process, static_cast<DWORD>(limit)) == WAIT_TIMEOUT;
    if (result.timedOut) {
        TerminateProcess(process, 1);
        WaitForSingleObject(process, INFINITE);
    }
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    result.exitCode = static_cast<int>(code);
}

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
    return content;
}

} // namespace

ChildResult run(const ChildProgram& program)
{
    const TemporaryFolder folder;
    const std::filesystem::path output = folder.path() / "output";
    const std::filesystem::path errors = folder.path() / "errors";
    ChildResult result;
    {
        const Handle inputStream(openForChild(L"NUL", GENERIC_READ, OPEN_EXISTING));
        const Handle outputStream(openForChild(output.c_str(), GENERIC_WRITE, CREATE_ALWAYS));
        const Handle errorStream(openForChild(errors.c_str(), GENERIC_WRITE, CREATE_ALWAYS));
        const Handle process(start(program, inputStream.get(), outputStream.get(), errorStream.get()));
        wait(program, process.get(), result);
    }
    result.output = contentOf(output);
    result.errors = contentOf(errors);
    return result;
}

} // namespace Quorvex::Velmora::TestSupport
