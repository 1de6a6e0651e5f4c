#include "tools/tessaport/home/DriveName.h"

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/home/DrivesFile.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Display.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t LongestName = 100;

void require(bool holds, const std::string& name, const std::string& reason)
{
    if (!holds)
        throw Failure(ExitCode::Usage, "'" + name + "' cannot be the name of a drive: " + reason + "; choose another");
}

} // namespace

void requireDriveName(const std::string& name, const Json& others)
{
    require(!name.empty(), name, "it is empty");
    require(
        characterCount(name) <= LongestName, name, "it is longer than " + std::to_string(LongestName) + " characters");
    require(name.find_first_of("/\\") == std::string::npos, name, "it holds a slash");
    require(asOneLine(safeForTerminal(name)) == name, name, "it holds characters that cannot be shown");
    require(name.front() != ' ' && name.back() != ' ', name, "it begins or ends with a space");
    require(name != "." && name != "..", name, "it names a folder in every folder");
    for (const Json& other : others) {
        require(memberOf(other, "name") != name, name, "another drive has it");
        require(asciiLower(memberOf(other, "id")) != asciiLower(name), name, "it is the identifier of another drive");
    }
}

} // namespace Quorvex::Velmora::Tool
