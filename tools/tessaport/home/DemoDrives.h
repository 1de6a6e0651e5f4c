#pragma once

#include "tools/tessaport/home/Home.h"

namespace Quorvex::Velmora::Tool
{

/// Makes the home of `tessaport demo` with its drives and files, or completes one that was made before. Existing files
/// stay as they are.
///
/// @throws Failure if the folder holds something else.
void makeDemoHome(const Home& home);

} // namespace Quorvex::Velmora::Tool
