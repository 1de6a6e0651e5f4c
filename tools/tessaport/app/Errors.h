// Any failure as a message and an exit code.
#pragma once

#include <string>

#include "tools/tessaport/errors/ExitCode.h"

namespace Quorvex::Velmora::Tool
{

struct Explanation {
    ExitCode code;
    std::string text;
};

/// What the exception that is being handled means for the user. ReaderGone and what is no std::exception pass through.
Explanation explainCurrentException();

} // namespace Quorvex::Velmora::Tool
