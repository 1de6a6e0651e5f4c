#include "tools/tessaport/home/DrivePatterns.h"

#include <algorithm>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/home/DrivesFile.h"
#include "tools/tessaport/output/Json.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr const char* Member = "ignore";

bool remove(Json& patterns, const std::string& pattern)
{
    const auto found = std::find(patterns.begin(), patterns.end(), Json(pattern));
    if (found == patterns.end())
        return false;
    patterns.erase(found);
    return true;
}

std::string inOneLine(const Json& patterns)
{
    std::string text;
    for (const Json& pattern : patterns)
        text += (text.empty() ? "" : ", ") + (pattern.is_string() ? pattern.get<std::string>() : pattern.dump());
    return text;
}

[[noreturn]] void throwMissing(const Json& drive, const std::string& pattern)
{
    const std::string others = inOneLine(patternsOf(drive));
    throw Failure(ExitCode::NotFound, "the drive '" + memberOf(drive, "name") + "' has no pattern '" + pattern + "'; " +
                                          (others.empty() ? "it has none" : "it has " + others));
}

} // namespace

Json patternsOf(const Json& drive)
{
    const auto found = drive.find(Member);
    return found != drive.end() && found->is_array() ? *found : Json::array();
}

std::string textOfPatterns(const Json& drive)
{
    const std::string patterns = inOneLine(patternsOf(drive));
    return patterns.empty() ? "" : "; leaves out " + patterns;
}

void changePatterns(Json& drive, const PatternChange& change)
{
    if (change.isEmpty())
        return;
    Json patterns = change.removesAll ? Json::array() : patternsOf(drive);
    for (const std::string& pattern : change.removed) {
        if (!remove(patterns, pattern) && !change.removesAll)
            throwMissing(drive, pattern);
    }
    for (const std::string& pattern : change.added) {
        remove(patterns, pattern);
        patterns.push_back(pattern);
    }
    if (patterns.empty())
        drive.erase(Member);
    else
        drive[Member] = patterns;
}

} // namespace Quorvex::Velmora::Tool
