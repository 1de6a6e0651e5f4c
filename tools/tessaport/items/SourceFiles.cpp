#include "tools/tessaport/items/SourceFiles.h"

#include <fstream>
#include <optional>
#include <set>
#include <system_error>

#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

struct Objection {
    std::string reason;
    ExitCode code;
};

std::optional<Objection> objectionTo(const std::string& given, const std::string& path)
{
    const fs::path file = toPath(path);
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) {
        if (fs::exists(toPath(given), error))
            return Objection{"a name with a back-slash cannot be added; rename the file", ExitCode::Failure};
        if (fs::is_symlink(file, error))
            return Objection{"the link leads to nothing", ExitCode::NotFound};
        return Objection{"no such file", ExitCode::NotFound};
    }
    if (status.type() == fs::file_type::directory)
        return Objection{"it is a folder; ask about the files in it", ExitCode::Failure};
    if (status.type() != fs::file_type::regular && status.type() != fs::file_type::none)
        return Objection{"it is not a regular file", ExitCode::Failure};
    if (!std::ifstream(file, std::ios::binary))
        return Objection{"it cannot be read; check its permissions", ExitCode::Failure};
    return std::nullopt;
}

} // namespace

std::vector<SourceFile> usableSources(const std::vector<std::string>& paths, Outcomes& outcomes)
{
    std::vector<SourceFile> usable;
    std::set<std::string> names;
    for (const std::string& given : paths) {
        const std::string path = absolutePath(given);
        if (const auto objection = objectionTo(given, path))
            outcomes.failed(given, objection->reason, objection->code);
        else if (!names.insert(fileName(path)).second)
            outcomes.failed(given, "another file of this name is being added");
        else
            usable.push_back({given, path});
    }
    return usable;
}

} // namespace Quorvex::Velmora::Tool
