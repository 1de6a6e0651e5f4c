#pragma once

#include <string>

#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// Checks the name that a drive is to have: it is typed, listed and written before paths.
///
/// @param others  the drives of the home without the one that gets the name.
/// @throws Failure that says what is wrong with it.
void requireDriveName(const std::string& name, const Json& others);

} // namespace Quorvex::Velmora::Tool
