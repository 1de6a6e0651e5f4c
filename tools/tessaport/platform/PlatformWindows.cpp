#include "tools/tessaport/platform/Platform.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <streambuf>
#include <system_error>

#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool::Platform
{
namespace
{

std::string narrow(std::wstring_view text)
{
    if (text.empty())
        return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

std::wstring widen(std::string_view text)
{
    if (text.empty())
        return {};
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), size);
    return result;
}

fs::path moduleFile(HMODULE module)
{
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(module, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

HANDLE handleOf(Stream stream)
{
    return GetStdHandle(stream == Stream::Input    ? STD_INPUT_HANDLE
                        : stream == Stream::Output ? STD_OUTPUT_HANDLE
                                                   : STD_ERROR_HANDLE);
}

// The console's code page cannot show every name, and changing it would outlive this process. So it gets wide strings.
bool writeToConsole(HANDLE console, std::wstring_view text)
{
    constexpr std::size_t most = 8192;
    while (!text.empty()) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(text.size(), most));
        if (WriteConsoleW(console, text.data(), wanted, &count, nullptr) == 0)
            return false;
        text.remove_prefix(count);
    }
    return true;
}

/// What is typed on the console, as UTF-8.
class ConsoleInput : public std::streambuf
{
protected:
    int_type underflow() override
    {
        constexpr wchar_t endOfInput = 0x1A;
        std::wstring typed(4096, L'\0');
        DWORD count = 0;
        const auto most = static_cast<DWORD>(typed.size());
        if (ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), typed.data(), most, &count, nullptr) == 0 || count == 0 ||
            typed.front() == endOfInput)
            return traits_type::eof();
        typed.resize(count);
        text = narrow(typed);
        setg(text.data(), text.data(), text.data() + text.size());
        return traits_type::to_int_type(text.front());
    }

private:
    std::string text;
};

/// Makes a console obey escape sequences. The setting belongs to the console and outlives the process.
class ConsoleMode
{
public:
    explicit ConsoleMode(DWORD standardHandle) : number(standardHandle) {}

    void obeyEscapes()
    {
        const HANDLE console = GetStdHandle(number);
        changed = GetConsoleMode(console, &former) != 0 && (former & ENABLE_VIRTUAL_TERMINAL_PROCESSING) == 0 &&
                  SetConsoleMode(console, former | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    }
    void restore()
    {
        if (changed)
            SetConsoleMode(GetStdHandle(number), former);
        changed = false;
    }

private:
    DWORD number;
    DWORD former = 0;
    bool changed = false;
};

ConsoleMode consoleModes[] = {ConsoleMode(STD_OUTPUT_HANDLE), ConsoleMode(STD_ERROR_HANDLE)};

std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

/// A file or folder; null if it does not exist or may not be opened.
using OpenFile = std::unique_ptr<void, HandleCloser>;

OpenFile openFile(const std::wstring& path, DWORD access)
{
    const HANDLE handle = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return OpenFile(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

constexpr std::wstring_view LongPathPrefix = L"\\\\?\\";

/// The path on a drive with a letter that a file has without any links; empty if it has no such path.
std::wstring pathWithoutLinks(const OpenFile& file)
{
    const DWORD size = GetFinalPathNameByHandleW(file.get(), nullptr, 0, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    std::wstring path(size, L'\0');
    path.resize(GetFinalPathNameByHandleW(file.get(), path.data(), size, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS));
    const bool isOnDrive = path.compare(0, LongPathPrefix.size(), LongPathPrefix) == 0 &&
                           path.size() > LongPathPrefix.size() + 1 && path[LongPathPrefix.size() + 1] == L':';
    return isOnDrive ? path.substr(LongPathPrefix.size()) : std::wstring();
}

} // namespace

PreparedStreams::PreparedStreams()
{
    for (ConsoleMode& mode : consoleModes)
        mode.obeyEscapes();
}

PreparedStreams::~PreparedStreams()
{
    for (ConsoleMode& mode : consoleModes)
        mode.restore();
}

std::vector<std::string> arguments(int, char**)
{
    // The narrow arguments are in the code page, which cannot represent every name.
    int count = 0;
    LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i)
        result.push_back(narrow(wide[i]));
    LocalFree(wide);
    return result;
}

bool isOpen(Stream stream)
{
    const HANDLE handle = handleOf(stream);
    return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

bool isTerminal(Stream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool showsEscapes(Stream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0 &&
           environment("TERM").value_or("") != "dumb";
}

Written writeTo(Stream stream, std::string_view bytes, std::string& reason)
{
    if (isTerminal(stream) && writeToConsole(handleOf(stream), widen(bytes)))
        return Written::All;
    while (!bytes.empty()) {
        DWORD count = 0;
        const DWORD wanted = static_cast<DWORD>(bytes.size() < 0x10000 ? bytes.size() : 0x10000);
        if (WriteFile(handleOf(stream), bytes.data(), wanted, &count, nullptr) == 0) {
            const std::error_code error = lastError();
            if (error.value() == ERROR_BROKEN_PIPE || error.value() == ERROR_NO_DATA)
                return Written::ReaderGone;
            reason = isOpen(stream) ? messageOf(error) : "it is closed";
            return Written::Failed;
        }
        bytes.remove_prefix(count);
    }
    return Written::All;
}

std::istream& standardInput()
{
    static ConsoleInput console;
    static std::istream typed(&console);
    return isTerminal(Stream::Input) ? typed : std::cin;
}

std::string messageOf(const std::error_code& error)
{
    if (error.category() != std::system_category())
        return error.message();
    // The narrow message is in the code page.
    wchar_t text[512];
    std::wstring_view message(text, FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(error.value()), 0, text, 512, nullptr));
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L'.'))
        message.remove_suffix(1);
    return message.empty() ? "error " + std::to_string(error.value()) : narrow(message);
}

std::optional<std::string> environment(const char* name)
{
    const std::wstring wideName = widen(name);
    const DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    if (size <= 1)
        return std::nullopt;
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), size));
    return narrow(value);
}

void setEnvironment(const char* name, const std::string& value)
{
    SetEnvironmentVariableW(widen(name).c_str(), widen(value).c_str());
}

fs::path executableFile() { return moduleFile(nullptr); }

fs::path loadedLibrary(const std::string& name)
{
    const HMODULE module = GetModuleHandleW(widen(name + ".dll").c_str());
    return module == nullptr ? fs::path() : moduleFile(module);
}

fs::path userDataFolder()
{
    const auto folder = environment("LOCALAPPDATA");
    return folder ? fs::u8path(*folder) : fs::path();
}

std::vector<fs::path> usualDotnetRoots()
{
    std::vector<fs::path> roots;
    if (const auto root = environment("DOTNET_ROOT"))
        roots.push_back(fs::u8path(*root));
    if (const auto programs = environment("ProgramFiles"))
        roots.push_back(fs::u8path(*programs) / "dotnet");
    return roots;
}

std::string nativeSlashes(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string quoted(const std::string& path) { return '"' + path + '"'; }

fs::path withoutLinks(const fs::path& absolute)
{
    // A path of a server stays as it is, so that the tool never waits for the network here.
    if (absolute.root_name().native().size() != 2)
        return absolute;
    for (fs::path existing = absolute;; existing = existing.parent_path()) {
        const OpenFile file = openFile(std::wstring(LongPathPrefix) + existing.native(), 0);
        if (file) {
            const fs::path found = pathWithoutLinks(file);
            return found.empty() ? absolute : (found / absolute.lexically_relative(existing)).lexically_normal();
        }
        if (!existing.has_relative_path())
            return absolute;
    }
}

void setModifiedTime(const fs::path& file, std::int64_t seconds)
{
    const OpenFile opened = openFile(file, FILE_WRITE_ATTRIBUTES);
    constexpr std::int64_t secondsFrom1601To1970 = 11644473600;
    const std::uint64_t ticks = static_cast<std::uint64_t>(seconds + secondsFrom1601To1970) * 10000000;
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    if (!opened || SetFileTime(opened.get(), nullptr, nullptr, &time) == 0)
        throw fs::filesystem_error("cannot set the time of", file, lastError());
}

void replaceFile(const fs::path& prepared, const fs::path& file)
{
    constexpr DWORD pauseMilliseconds = 10;
    for (int attempts = 300; MoveFileExW(prepared.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING) == 0; --attempts) {
        const std::error_code error = lastError();
        // The service reads its files while it answers; only Windows then refuses to replace them.
        const bool mayBeOpen = error.value() == ERROR_ACCESS_DENIED || error.value() == ERROR_SHARING_VIOLATION;
        std::error_code ignored;
        if (!mayBeOpen || attempts == 1 || fs::is_directory(file, ignored))
            throw fs::filesystem_error("cannot replace", prepared, file, error);
        Sleep(pauseMilliseconds);
    }
}

void writeNewFile(const fs::path& file, std::string_view content)
{
    const HANDLE handle =
        CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw fs::filesystem_error("cannot create", file, lastError());
    const OpenFile created(handle);
    while (!content.empty()) {
        constexpr std::size_t most = 1 << 20;
        DWORD count = 0;
        if (WriteFile(handle, content.data(), static_cast<DWORD>(std::min(content.size(), most)), &count, nullptr) == 0)
            throw fs::filesystem_error("cannot write", file, lastError());
        content.remove_prefix(count);
    }
    if (FlushFileBuffers(handle) == 0)
        throw fs::filesystem_error("cannot write", file, lastError());
}

std::optional<std::intptr_t> tryLock(const fs::path& file)
{
    const HANDLE handle = CreateFileW(
        file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle != INVALID_HANDLE_VALUE)
        return reinterpret_cast<std::intptr_t>(handle);
    if (GetLastError() == ERROR_SHARING_VIOLATION)
        return std::nullopt;
    throw fs::filesystem_error("cannot lock", file, lastError());
}

void unlock(std::intptr_t lock) { CloseHandle(reinterpret_cast<HANDLE>(lock)); }

std::optional<std::string> readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    return stream.bad() ? std::nullopt : std::optional(std::move(content));
}

std::error_code tryCreating(const fs::path& folder)
{
    const fs::path trial = folder / (".tessaport-" + std::to_string(GetCurrentProcessId()));
    std::error_code error;
    if (fs::create_directory(trial, error)) {
        std::error_code ignored;
        fs::remove(trial, ignored);
    }
    return error;
}

std::string othersWhoMayChange(const fs::path&) { return {}; }

} // namespace Quorvex::Velmora::Tool::Platform
