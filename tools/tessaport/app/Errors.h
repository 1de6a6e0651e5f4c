#pragma once

#include <string>

#include "tools/tessaport/errors/ExitCode.h"

namespace Quorvex::Velmora::Tool
{

/// A failure as the user sees it.
struct Explanation {
    ExitCode code;
    std::string text;
};

/// Explains the exception that is being handled. ReaderGone and what is not a std::exception propagate.
Explanation explainCurrentException();

} // namespace Quorvex::Velmora::Tool
