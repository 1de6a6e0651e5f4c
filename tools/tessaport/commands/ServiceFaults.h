#pragma once

#include "tools/tessaport/commandline/CommandLine.h"

namespace Quorvex::Velmora::Tool
{

/// Declares the commands of `service` that let requests be slow or fail.
void addFaultCommands(const CommandLine& line);

} // namespace Quorvex::Velmora::Tool
