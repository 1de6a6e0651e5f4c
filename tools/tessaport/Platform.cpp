#include "Platform.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <system_error>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>
#else
#include <csignal>
#include <fcntl.h>
#include <link.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool::Platform
{

std::optional<std::string> readInputLine()
{
    std::string line;
    if (!std::getline(std::cin, line))
        return std::nullopt;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

#if defined(_WIN32)

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

std::wstring widen(const std::string& text) { return fs::u8path(text).wstring(); }

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

std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

class OpenFile
{
public:
    OpenFile(const fs::path& path, DWORD access, const char* what)
        : handle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
              OPEN_EXISTING, 0, nullptr))
    {
        if (handle == INVALID_HANDLE_VALUE)
            throw fs::filesystem_error(what, path, lastError());
    }
    ~OpenFile() { CloseHandle(handle); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    HANDLE handle;
};

} // namespace

void prepareStreams()
{
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

std::vector<std::string> arguments(int, char**)
{
    // The narrow arguments went through the code page, which cannot hold every name.
    int count = 0;
    LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i)
        result.push_back(narrow(wide[i]));
    LocalFree(wide);
    return result;
}

bool isTerminal(Stream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

Written writeTo(Stream stream, std::string_view bytes, std::string& reason)
{
    while (!bytes.empty()) {
        DWORD count = 0;
        const DWORD wanted = static_cast<DWORD>(bytes.size() < 0x10000 ? bytes.size() : 0x10000);
        if (WriteFile(handleOf(stream), bytes.data(), wanted, &count, nullptr) == 0) {
            const std::error_code error = lastError();
            if (error.value() == ERROR_BROKEN_PIPE || error.value() == ERROR_NO_DATA)
                return Written::ReaderGone;
            reason = error.message();
            return Written::Failed;
        }
        bytes.remove_prefix(count);
    }
    return Written::All;
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
    for (char& c : path)
        c = c == '/' ? '\\' : c;
    return path;
}

void setModifiedTime(const fs::path& file, std::int64_t seconds)
{
    const OpenFile opened(file, FILE_WRITE_ATTRIBUTES, "cannot set the time of");
    constexpr std::int64_t secondsFrom1601To1970 = 11644473600;
    const std::uint64_t ticks = static_cast<std::uint64_t>(seconds + secondsFrom1601To1970) * 10000000;
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    if (SetFileTime(opened.handle, nullptr, nullptr, &time) == 0)
        throw fs::filesystem_error("cannot set the time of", file, lastError());
}

void flushToDisk(const fs::path& file)
{
    const OpenFile opened(file, GENERIC_WRITE, "cannot write to disk");
    if (FlushFileBuffers(opened.handle) == 0)
        throw fs::filesystem_error("cannot write to disk", file, lastError());
}

std::int64_t processId() { return GetCurrentProcessId(); }

#else

namespace
{

int descriptorOf(Stream stream) { return static_cast<int>(stream); }

struct LibrarySearch {
    std::string nameWithoutVersion;
    fs::path found;
};

int lookAtLibrary(dl_phdr_info* info, std::size_t, void* data)
{
    auto& search = *static_cast<LibrarySearch*>(data);
    const fs::path file(info->dlpi_name);
    if (file.filename().native().compare(0, search.nameWithoutVersion.size(), search.nameWithoutVersion) != 0)
        return 0;
    search.found = file.lexically_normal();
    return 1;
}

std::error_code lastError() { return {errno, std::generic_category()}; }

} // namespace

void prepareStreams()
{
    // .NET ignores the signal for the whole process anyway; from here on a closed pipe is an error of write.
    std::signal(SIGPIPE, SIG_IGN);
}

std::vector<std::string> arguments(int argc, char** argv)
{
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool isTerminal(Stream stream) { return isatty(descriptorOf(stream)) != 0; }

Written writeTo(Stream stream, std::string_view bytes, std::string& reason)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptorOf(stream), bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EPIPE) {
            return Written::ReaderGone;
        } else if (errno != EINTR) {
            reason = lastError().message();
            return Written::Failed;
        }
    }
    return Written::All;
}

std::optional<std::string> environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

void setEnvironment(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

fs::path executableFile()
{
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored);
}

fs::path loadedLibrary(const std::string& name)
{
    LibrarySearch search{"lib" + name + ".so", {}};
    dl_iterate_phdr(lookAtLibrary, &search);
    return search.found;
}

fs::path userDataFolder()
{
    if (const auto folder = environment("XDG_DATA_HOME"); folder && fs::path(*folder).is_absolute())
        return *folder;
    if (const auto home = environment("HOME"))
        return fs::path(*home) / ".local/share";
    const passwd* const user = getpwuid(getuid());
    return user == nullptr ? fs::path() : fs::path(user->pw_dir) / ".local/share";
}

std::vector<fs::path> usualDotnetRoots()
{
    std::vector<fs::path> roots;
    if (const auto root = environment("DOTNET_ROOT"))
        roots.emplace_back(*root);
    for (const char* registration : {"/etc/dotnet/install_location_x64", "/etc/dotnet/install_location"}) {
        std::ifstream file(registration);
        if (std::string line; std::getline(file, line) && !line.empty())
            roots.emplace_back(line);
    }
    for (const char* usual : {"/usr/share/dotnet", "/usr/lib/dotnet"})
        roots.emplace_back(usual);
    return roots;
}

std::string nativeSlashes(std::string path)
{
    for (char& c : path)
        c = c == '\\' ? '/' : c;
    return path;
}

void setModifiedTime(const fs::path& file, std::int64_t seconds)
{
    const timespec time{static_cast<time_t>(seconds), 0};
    const timespec times[] = {time, time};
    if (utimensat(AT_FDCWD, file.c_str(), times, 0) != 0)
        throw fs::filesystem_error("cannot set the time of", file, lastError());
}

void flushToDisk(const fs::path& file)
{
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        throw fs::filesystem_error("cannot write to disk", file, lastError());
    const bool flushed = fsync(descriptor) == 0;
    const std::error_code error = lastError();
    close(descriptor);
    if (!flushed)
        throw fs::filesystem_error("cannot write to disk", file, error);
}

std::int64_t processId() { return getpid(); }

#endif

} // namespace Quorvex::Velmora::Tool::Platform
