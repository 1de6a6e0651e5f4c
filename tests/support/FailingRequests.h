// Requests whose allocations fail one after the other.
#pragma once

#include <cstdint>
#include <functional>

#include <velmora/api/Exceptions.h>
#include "tests/support/FailingAllocations.h"

namespace Quorvex::Velmora::TestSupport
{

/// As failEachAllocation(), but ApiException may propagate from the operation as well.
inline std::int64_t failEverywhere(const std::function<void()>& operation, const std::function<void()>& check)
{
    const auto request = [&operation] {
        try {
            operation();
        } catch (const TessaportAPI::ApiException&) {
        }
    };
    return failEachAllocation(request, check);
}

} // namespace Quorvex::Velmora::TestSupport
