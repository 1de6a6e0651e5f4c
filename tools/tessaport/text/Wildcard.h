#pragma once

#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// True if the entire name matches the pattern: `*` stands for any characters, `?` for one. The case of the letters A
/// to Z is ignored.
bool matchesWildcard(std::string_view pattern, std::string_view name);

} // namespace Quorvex::Velmora::Tool
