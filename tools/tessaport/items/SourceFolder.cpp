#include "tools/tessaport/items/SourceFolder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

// The given form of what is in a folder, which may end with a slash.
std::string inside(std::string folder, const std::string& name)
{
    if (!folder.empty() && folder.back() != '/' && folder.back() != fs::path::preferred_separator)
        folder += static_cast<char>(fs::path::preferred_separator);
    return folder += name;
}

/// The entries of a folder by name; reports the folder if it cannot be read to its end.
std::vector<fs::directory_entry> entriesOf(const fs::path& folder, const std::string& given, Outcomes& outcomes)
{
    std::vector<fs::directory_entry> entries;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        entries.push_back(*it);
    if (error)
        outcomes.failed(given, "it cannot be read; check its permissions");
    std::sort(entries.begin(), entries.end());
    return entries;
}

/// Collects a folder with everything in it.
class Collection
{
public:
    explicit Collection(Outcomes& addOutcomes) : outcomes(addOutcomes) {}

    void add(const SourceFile& folder, const std::string& relativePath)
    {
        const std::size_t index = found.size();
        found.push_back({folder.given, relativePath, {}});
        std::vector<std::string> files;
        for (const fs::directory_entry& entry : entriesOf(toPath(folder.path), folder.given, outcomes)) {
            const std::string name = toText(entry.path().filename());
            const SourceFile source{inside(folder.given, name), toText(entry.path())};
            std::error_code error;
            const fs::file_type type = entry.symlink_status(error).type();
            // The service takes a back-slash for a slash.
            if (fs::path::preferred_separator == '/' && name.find('\\') != std::string::npos)
                outcomes.failed(source.given, "a name with a back-slash cannot be added; rename it");
            else if (type == fs::file_type::directory)
                add(source, std::string(relativePath).append("/").append(name));
            else if (type == fs::file_type::symlink)
                outcomes.failed(source.given, "it is a link, which is left out; add what it leads to by itself");
            else
                files.push_back(source.given);
        }
        found[index].files = usableSources(files, outcomes);
    }

    std::vector<SourceFolder> found;

private:
    Outcomes& outcomes;
};

} // namespace

std::vector<SourceFolder> foldersIn(const SourceFile& folder, Outcomes& outcomes)
{
    Collection collection(outcomes);
    collection.add(folder, fileName(folder.path));
    return collection.found;
}

} // namespace Quorvex::Velmora::Tool
