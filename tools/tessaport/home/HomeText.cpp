#include "tools/tessaport/home/HomeText.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

// As much as the service reads.
constexpr std::uintmax_t MostBytes = 64U << 20U;

std::string withoutByteOrderMark(std::string text)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.compare(0, mark.size(), mark) == 0 ? text.substr(mark.size()) : text;
}

} // namespace

// Opening a pipe would wait for a writer, so this looks first.
bool isHomeFile(const fs::path& file, const std::string& remedy)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found)
        return false;
    if (status.type() == fs::file_type::none)
        throw Failure(ExitCode::Failure, "cannot read '" + toText(file) + "': " + Platform::messageOf(error));
    if (status.type() != fs::file_type::regular)
        throw Failure(ExitCode::Failure,
            "'" + toText(file) + "' is " +
                (status.type() == fs::file_type::directory ? "a folder" : "a pipe, a socket or a device") +
                " and not a file; remove it, then " + remedy);
    return true;
}

std::string readHomeFile(const fs::path& file)
{
    if (std::error_code error; fs::file_size(file, error) > MostBytes && !error)
        throw Failure(ExitCode::Failure,
            "'" + toText(file) + "' is larger than " + std::to_string(MostBytes >> 20U) + " MB; correct or remove it");
    auto text = Platform::readFile(file);
    if (!text)
        throw Failure(ExitCode::Failure, "'" + toText(file) + "' cannot be read");
    return withoutByteOrderMark(std::move(*text));
}

bool holdsOtherFiles(const Home& home)
{
    std::error_code error;
    if (fs::exists(home.folder(), error) && !fs::is_directory(home.folder(), error))
        return true;
    const fs::directory_iterator entries(home.folder(), error);
    return std::any_of(begin(entries), end(entries), [&home](const fs::directory_entry& entry) {
        const fs::path& path = entry.path();
        return path != home.lockFile() && path != home.serviceLockFile() && path.extension() != ".new";
    });
}

} // namespace Quorvex::Velmora::Tool
