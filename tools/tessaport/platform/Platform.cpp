#include "tools/tessaport/platform/Platform.h"

#include <istream>

namespace Quorvex::Velmora::Tool::Platform
{

std::optional<std::string> readInputLine()
{
    std::string line;
    if (!std::getline(standardInput(), line))
        return std::nullopt;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

} // namespace Quorvex::Velmora::Tool::Platform
