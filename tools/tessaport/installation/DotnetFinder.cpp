#include "tools/tessaport/installation/DotnetFinder.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

// Numbers within a version are compared as numbers: 10.0 is newer than 9.0.
bool isOlder(const std::string& a, const std::string& b)
{
    const char* left = a.c_str();
    const char* right = b.c_str();
    while (*left != '\0' && *right != '\0') {
        char* leftEnd = nullptr;
        char* rightEnd = nullptr;
        const unsigned long leftNumber = std::strtoul(left, &leftEnd, 10);
        const unsigned long rightNumber = std::strtoul(right, &rightEnd, 10);
        if (leftNumber != rightNumber)
            return leftNumber < rightNumber;
        if (leftEnd == left || rightEnd == right)
            break;
        left = *leftEnd == '.' ? leftEnd + 1 : leftEnd;
        right = *rightEnd == '.' ? rightEnd + 1 : rightEnd;
    }
    return a < b;
}

std::vector<std::string> versionsIn(const fs::path& folder)
{
    std::vector<std::string> versions;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = toText(entry->path().filename());
        if (name[0] >= '0' && name[0] <= '9')
            versions.push_back(name);
    }
    std::sort(versions.begin(), versions.end(), isOlder);
    return versions;
}

} // namespace

DotnetInstallation lookAtDotnet(const fs::path& root)
{
    return {root, versionsIn(root / "host" / "fxr"), versionsIn(root / "shared" / "Microsoft.NETCore.App")};
}

bool isAtLeast(const std::string& version, unsigned major)
{
    return std::strtoul(version.c_str(), nullptr, 10) >= major;
}

} // namespace Quorvex::Velmora::Tool
