#include "tools/tessaport/platform/Platform.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <link.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool::Platform
{

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

bool closedAtStart[3];

// The next file or pipe that the process opens would get the number and then the output. The null device is opened in
// the direction that is not needed, so that using the stream stays an error.
bool occupyIfClosed(Stream stream)
{
    if (fcntl(descriptorOf(stream), F_GETFD) >= 0 || errno != EBADF)
        return false;
    // The lowest free number is this one, since those below it are in use by now.
    static_cast<void>(open("/dev/null", stream == Stream::Input ? O_WRONLY : O_RDONLY));
    return true;
}

} // namespace

PreparedStreams::PreparedStreams()
{
    // .NET ignores the signal for the entire process anyway. From here on a closed pipe is an error of write.
    std::signal(SIGPIPE, SIG_IGN);
    for (const Stream stream : {Stream::Input, Stream::Output, Stream::Error})
        closedAtStart[descriptorOf(stream)] = occupyIfClosed(stream);
}

PreparedStreams::~PreparedStreams() = default;

std::vector<std::string> arguments(int argc, char** argv)
{
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool isOpen(Stream stream) { return !closedAtStart[descriptorOf(stream)]; }

bool isTerminal(Stream stream) { return isatty(descriptorOf(stream)) != 0; }

bool showsEscapes(Stream stream) { return isTerminal(stream) && environment("TERM").value_or("") != "dumb"; }

std::istream& standardInput() { return std::cin; }

std::string messageOf(const std::error_code& error) { return error.message(); }

Written writeTo(Stream stream, std::string_view bytes, std::string& reason)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptorOf(stream), bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EPIPE) {
            return Written::ReaderGone;
        } else if (errno != EINTR) {
            reason = isOpen(stream) ? messageOf(lastError()) : "it is closed";
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
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string quoted(const std::string& path) { return '\'' + path + '\''; }

fs::path withoutLinks(const fs::path& absolute) { return fs::weakly_canonical(absolute); }

void setModifiedTime(const fs::path& file, std::int64_t seconds)
{
    const timespec time{static_cast<time_t>(seconds), 0};
    const timespec times[] = {time, time};
    if (utimensat(AT_FDCWD, file.c_str(), times, 0) != 0)
        throw fs::filesystem_error("cannot set the time of", file, lastError());
}

void replaceFile(const fs::path& prepared, const fs::path& file) { fs::rename(prepared, file); }

void writeNewFile(const fs::path& file, std::string_view content)
{
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        throw fs::filesystem_error("cannot create", file, lastError());
    bool isWritten = true;
    while (isWritten && !content.empty()) {
        const ssize_t count = write(descriptor, content.data(), content.size());
        isWritten = count >= 0 || errno == EINTR;
        content.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    isWritten = isWritten && fsync(descriptor) == 0;
    const std::error_code error = lastError();
    close(descriptor);
    if (!isWritten)
        throw fs::filesystem_error("cannot write", file, error);
}

std::optional<std::intptr_t> tryLock(const fs::path& file)
{
    // Opening a pipe without O_NONBLOCK could wait for its other end.
    const int descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor < 0)
        throw fs::filesystem_error("cannot open", file, lastError());
    struct stat status = {};
    std::error_code error;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        error = std::make_error_code(std::errc::invalid_argument);
    else if (flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        error = lastError();
    if (!error)
        return descriptor;
    close(descriptor);
    if (error.value() == EWOULDBLOCK)
        return std::nullopt;
    throw fs::filesystem_error("cannot lock", file, error);
}

void unlock(std::intptr_t lock) { close(static_cast<int>(lock)); }

std::optional<std::string> readFile(const fs::path& file)
{
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return std::nullopt;
    struct stat status = {};
    ssize_t count = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? 1 : -1;
    std::string content;
    std::vector<char> block(64 * 1024);
    while (count > 0) {
        count = read(descriptor, block.data(), block.size());
        content.append(block.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    close(descriptor);
    return count < 0 ? std::nullopt : std::optional(std::move(content));
}

// A file without a name leaves nothing if the process is killed; not every file system has those.
std::error_code tryCreating(const fs::path& folder)
{
    const int file = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file >= 0) {
        close(file);
        return {};
    }
    if (errno != EOPNOTSUPP && errno != EISDIR && errno != ENOENT && errno != EINVAL)
        return lastError();
    std::string trial = (folder / ".tessaport-XXXXXX").native();
    if (mkdtemp(trial.data()) == nullptr)
        return lastError();
    rmdir(trial.c_str());
    return {};
}

std::string othersWhoMayChange(const fs::path& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return {};
    if (status.st_uid != geteuid() && status.st_uid != 0) {
        const passwd* const user = getpwuid(status.st_uid);
        return user == nullptr ? "user " + std::to_string(status.st_uid) : std::string("user '") + user->pw_name + '\'';
    }
    return (status.st_mode & S_IWOTH) != 0 ? "everyone" : "";
}

} // namespace Quorvex::Velmora::Tool::Platform
