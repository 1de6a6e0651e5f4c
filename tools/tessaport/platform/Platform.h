// Everything that differs between operating systems. Texts and paths given as std::string are UTF-8.
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
    ~PreparedStreams();
    PreparedStreams(const PreparedStreams&) = delete;
    PreparedStreams& operator=(const PreparedStreams&) = delete;
};

/// The arguments after the program's name.
std::vector<std::string> arguments(int argc, char** argv);

/// False if the process was started with this stream closed.
bool isOpen(Stream stream);

bool isTerminal(Stream stream);

/// True for a terminal that obeys escape sequences.
bool showsEscapes(Stream stream);

enum class Written { All, ReaderGone, Failed };

/// Writes all the bytes. After Failed, `reason` says why.
Written writeTo(Stream stream, std::string_view bytes, std::string& reason);

/// Standard input in UTF-8, also what is typed.
std::istream& standardInput();

/// One line of standard input without its end; nothing at the end of input.
std::optional<std::string> readInputLine();

/// What an error of the system means, in the words of the system.
std::string messageOf(const std::error_code& error);

/// Empty and unset variables are both reported as nothing.
std::optional<std::string> environment(const char* name);

/// Sets a variable for this process; to be called before other threads exist.
void setEnvironment(const char* name, const std::string& value);

/// The running program's own file.
std::filesystem::path executableFile();

/// The file of a loaded library, "coreclr" for libcoreclr.so or coreclr.dll; empty when it is not loaded.
std::filesystem::path loadedLibrary(const std::string& name);

/// The folder in which applications keep the user's data.
std::filesystem::path userDataFolder();

/// The folders in which .NET is looked for when no folder is named, the most important first.
std::vector<std::filesystem::path> usualDotnetRoots();

/// Slashes as this platform has them: on Linux back-slashes become slashes, as file names of the sync application hold
/// none.
std::string nativeSlashes(std::string path);

/// A path as the shells of this platform take it for one argument.
std::string quoted(const std::string& path);

/// The path with all links followed, as far as it exists. @throws std::filesystem::filesystem_error.
std::filesystem::path withoutLinks(const std::filesystem::path& absolute);

/// Sets a file's last-write time in seconds since 1970 (UTC). @throws std::filesystem::filesystem_error.
void setModifiedTime(const std::filesystem::path& file, std::int64_t seconds);

/// Makes sure that a written file is on the disk. @throws std::filesystem::filesystem_error.
void flushToDisk(const std::filesystem::path& file);

std::int64_t processId();

} // namespace Quorvex::Velmora::Tool::Platform
