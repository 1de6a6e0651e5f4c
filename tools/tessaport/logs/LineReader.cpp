#include "tools/tessaport/logs/LineReader.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <system_error>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t PieceSize = 256 * 1024;
constexpr std::size_t LongestLine = 64 * 1024 * 1024;

} // namespace

LineReader::LineReader(const std::string& file) : name(file), source(&opened)
{
    if (file == "-") {
        if (!Platform::isOpen(Platform::Stream::Input))
            throw Failure(ExitCode::Failure, "standard input is closed; name a file");
        source = &Platform::standardInput();
        return;
    }
    const fs::path path = toPath(file);
    std::error_code error;
    if (!fs::exists(path, error))
        throw Failure(ExitCode::NotFound, "'" + file + "': no such file");
    if (fs::is_directory(path, error))
        throw Failure(ExitCode::Failure, "'" + file + "' is a folder");
    opened.open(path, std::ios::binary);
    if (!opened)
        throw Failure(ExitCode::Failure, "'" + file + "' cannot be read; check its permissions");
}

bool LineReader::next(std::string_view& line)
{
    std::size_t searched = start;
    for (;;) {
        const void* const found = std::memchr(buffer.data() + searched, '\n', end - searched);
        if (found != nullptr) {
            const auto position = static_cast<std::size_t>(static_cast<const char*>(found) - buffer.data());
            line = {buffer.data() + start, position - start};
            start = position + 1;
            break;
        }
        const std::size_t unfinished = end - start;
        if (readMore()) {
            searched = start + unfinished;
            continue;
        }
        if (unfinished == 0)
            return false;
        line = {buffer.data() + start, unfinished};
        start = end;
        break;
    }
    ++lineNumber;
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return true;
}

// Moves the unfinished line to the front and reads after it.
bool LineReader::readMore()
{
    if (start > 0) {
        std::copy(buffer.begin() + static_cast<std::ptrdiff_t>(start),
            buffer.begin() + static_cast<std::ptrdiff_t>(end), buffer.begin());
        end -= start;
        start = 0;
    }
    if (end > LongestLine)
        throw Failure(ExitCode::Failure,
            "'" + name + "', line " + std::to_string(lineNumber + 1) + " is longer than 64 MiB; this is no log");
    if (buffer.size() - end < PieceSize)
        buffer.resize(std::max(buffer.size() * 2, PieceSize));
    source->read(buffer.data() + end, static_cast<std::streamsize>(buffer.size() - end));
    if (source->bad())
        throw Failure(ExitCode::Failure, "'" + name + "' cannot be read to its end");
    end += static_cast<std::size_t>(source->gcount());
    return source->gcount() > 0;
}

} // namespace Quorvex::Velmora::Tool
