// What `tessaport demo` puts into a home.
#pragma once

#include "tools/tessaport/home/Home.h"

namespace Quorvex::Velmora::Tool
{

/// Makes the home with its drives and files, or completes one that was made before; files that are there stay as they
/// are. @throws Failure when the folder holds something else.
void makeDemoHome(const Home& home);

} // namespace Quorvex::Velmora::Tool
