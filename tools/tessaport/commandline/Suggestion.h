// What a mistyped word was probably meant to be.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// The candidate with the fewest changed characters, if that is few enough to be a slip.
std::optional<std::string> closest(const std::string& word, const std::vector<std::string>& candidates);

} // namespace Quorvex::Velmora::Tool
