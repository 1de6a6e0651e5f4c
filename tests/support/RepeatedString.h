// Long messages for the tests of time.
#pragma once

#include <cstddef>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

/// Returns a part as often as it takes to reach a length.
inline std::wstring repeated(const std::wstring& part, std::size_t length)
{
    std::wstring result;
    result.reserve(length + part.size());
    while (result.size() < length)
        result += part;
    return result;
}

} // namespace Quorvex::Velmora::TestSupport
