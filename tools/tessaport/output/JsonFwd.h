#pragma once

#include <nlohmann/json_fwd.hpp>

namespace Quorvex::Velmora::Tool
{

/// Keeps members in the order in which they were added. Sources that make or read values include Json.h; headers only
/// name the type, because the templates of the JSON library take long to compile.
using Json = nlohmann::ordered_json;

} // namespace Quorvex::Velmora::Tool
