#include <sstream>

#include "tests/support/ChildProcess.h"

namespace Quorvex::Velmora::TestSupport
{

std::string ChildResult::description() const
{
    std::ostringstream text;
    if (timedOut)
        text << "exceeded its time limit";
    else if (signal != 0)
        text << "ended by signal " << signal;
    else
        text << "exit code " << exitCode;
    text << "\n--- output\n" << output << "--- errors\n" << errors;
    return text.str();
}

} // namespace Quorvex::Velmora::TestSupport
