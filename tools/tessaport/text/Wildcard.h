// Patterns for names.
#pragma once

#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// True when the whole name fits the pattern: `*` stands for any characters, `?` for one. Letters A to Z match in
/// either case.
bool matchesWildcard(std::string_view pattern, std::string_view name);

} // namespace Quorvex::Velmora::Tool
