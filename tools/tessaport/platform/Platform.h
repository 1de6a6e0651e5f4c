/// @file
/// Everything that differs between operating systems. Strings and paths given as std::string are UTF-8.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Quorvex::Velmora::Tool::Platform
{

enum class Stream { Input, Output, Error };

/// Prepares the standard streams for its lifetime: writeTo() reports a closed pipe, a stream that was closed at the
/// start stays closed instead of becoming the next file that is opened, and a console obeys escape sequences. The
/// destructor restores the settings of the console.
class PreparedStreams
{
public:
    PreparedStreams();
    ~PreparedStreams(); // NOLINT(performance-trivially-destructible): that of Windows is not
    PreparedStreams(const PreparedStreams&) = delete;
    PreparedStreams& operator=(const PreparedStreams&) = delete;
};

/// The arguments after the name of the program.
std::vector<std::string> arguments(int argc, char** argv);

/// False if the process was started with this stream closed.
bool isOpen(Stream stream);

bool isTerminal(Stream stream);

/// True if the stream is a terminal that obeys escape sequences.
bool showsEscapes(Stream stream);

enum class Written { All, ReaderGone, Failed };

/// Writes all bytes. If the result is Failed, `reason` says why.
Written writeTo(Stream stream, std::string_view bytes, std::string& reason);

/// Standard input as UTF-8, also if it is typed on a console.
std::istream& standardInput();

/// Reads one line of standard input, without its line end; nothing at the end of input.
std::optional<std::string> readInputLine();

/// The message of the operating system for an error.
std::string messageOf(const std::error_code& error);

/// The value of a variable; nothing if it is unset or empty.
std::optional<std::string> environment(const char* name);

/// Sets a variable for this process. Call it before other threads exist.
void setEnvironment(const char* name, const std::string& value);

/// The file of the running program.
std::filesystem::path executableFile();

/// The file of a loaded library, for example "coreclr" for libcoreclr.so or coreclr.dll; empty if it is not loaded.
std::filesystem::path loadedLibrary(const std::string& name);

/// The folder in which applications keep the user's data; empty if the system names none.
std::filesystem::path userDataFolder();

/// The folders in which .NET is looked for if the user names no folder, the most important first.
std::vector<std::filesystem::path> usualDotnetRoots();

/// Replaces slashes by those of this platform. On Linux, too: file names of the sync application contain no
/// back-slashes.
std::string nativeSlashes(std::string path);

/// Quotes a path so that the shells of this platform read it as one argument.
std::string quoted(const std::string& path);

/// Follows all links of a path, as far as it exists. @throws std::filesystem::filesystem_error.
std::filesystem::path withoutLinks(const std::filesystem::path& absolute);

/// Sets a file's last-write time in seconds since 1970 (UTC). @throws std::filesystem::filesystem_error.
void setModifiedTime(const std::filesystem::path& file, std::int64_t seconds);

/// Gives a file the name of another, which need not exist, in one step. On Windows that waits some seconds while the
/// other file is open. @throws std::filesystem::filesystem_error.
void replaceFile(const std::filesystem::path& prepared, const std::filesystem::path& file);

/// Creates a file, and waits until it is on the disk. Fails if anything has the name, be it a link that leads nowhere.
///
/// @throws std::filesystem::filesystem_error.
void writeNewFile(const std::filesystem::path& file, std::string_view content);

/// Takes the lock on a file, which is created if it is missing. The operating system releases it when the process ends.
///
/// @return what unlock() takes; nothing if another process holds the lock.
/// @throws std::filesystem::filesystem_error if the file is no file or cannot be opened.
std::optional<std::intptr_t> tryLock(const std::filesystem::path& file);
void unlock(std::intptr_t lock);

/// The content of a file; nothing if it cannot be read or is something else. Never waits, as opening a pipe would.
std::optional<std::string> readFile(const std::filesystem::path& file);

/// Why nothing can be created in a folder; no error if something can. Only trying tells: permissions, read-only file
/// systems and quotas all have a say. Nothing stays in the folder.
std::error_code tryCreating(const std::filesystem::path& folder);

/// Who else decides what is at a path, as far as its owner and its permissions say; empty if no one does. On Windows
/// that is not looked at.
std::string othersWhoMayChange(const std::filesystem::path& path);

} // namespace Quorvex::Velmora::Tool::Platform
