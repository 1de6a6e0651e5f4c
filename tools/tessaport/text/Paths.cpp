#include "tools/tessaport/text/Paths.h"

#include <system_error>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/platform/Platform.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

fs::path withoutEndSlash(const fs::path& path)
{
    return path.has_relative_path() && !path.has_filename() ? path.parent_path() : path;
}

} // namespace

fs::path toPath(const std::string& text) { return fs::u8path(text); }

std::string toText(const fs::path& path) { return path.u8string(); }

std::string absolutePath(const std::string& given)
{
    if (given.empty())
        throw Failure(ExitCode::Usage, "an empty path names nothing");
    std::error_code error;
    const fs::path absolute = fs::absolute(toPath(Platform::nativeSlashes(given)), error);
    if (error)
        throw Failure(ExitCode::Failure, "the current directory is gone; give '" + given +
                                             "' as an absolute path or change to a folder that exists");
    return toText(withoutEndSlash(absolute.lexically_normal()));
}

std::string withoutLinks(const std::string& absolute)
{
    try {
        return toText(withoutEndSlash(Platform::withoutLinks(toPath(absolute))));
    } catch (const fs::filesystem_error&) {
        return absolute;
    }
}

std::vector<std::string> selfAndParents(const std::string& absolute)
{
    std::vector<std::string> all{absolute};
    for (fs::path path = toPath(absolute); path.has_relative_path();) {
        path = path.parent_path();
        all.push_back(toText(path));
    }
    return all;
}

std::string fileName(const std::string& path)
{
    const std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string withBackslashes(std::string path)
{
    for (char& c : path)
        c = c == '/' ? '\\' : c;
    return path;
}

} // namespace Quorvex::Velmora::Tool
