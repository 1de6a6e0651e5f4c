#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// Finds the candidate that a mistyped word was probably meant to be: the one with the fewest changed characters.
///
/// @return nothing if too many characters differ for a slip.
std::optional<std::string> closest(const std::string& word, const std::vector<std::string>& candidates);

} // namespace Quorvex::Velmora::Tool
