#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// What is to become of the patterns of a drive, which leave out files. Patterns are removed first, then added at the
/// end.
struct PatternChange {
    std::vector<std::string> added;
    std::vector<std::string> removed;
    bool removesAll = false;

    [[nodiscard]] bool isEmpty() const { return added.empty() && removed.empty() && !removesAll; }
};

/// The patterns of a drive in the list of drives; an empty array if it has none.
Json patternsOf(const Json& drive);

/// "; leaves out *.tmp, build/", or nothing for a drive without patterns.
std::string textOfPatterns(const Json& drive);

/// Changes the patterns of a drive in the list of drives. A pattern that is added again moves to the end. Whether a
/// string is a pattern, the service says.
///
/// @throws Failure with NotFound if a pattern that is to be removed is not there.
void changePatterns(Json& drive, const PatternChange& change);

} // namespace Quorvex::Velmora::Tool
