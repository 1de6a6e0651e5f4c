#pragma once

#include <cstdint>

namespace Quorvex::Velmora::Common
{

/// The status that some one-shot operations return.
enum class QVCode : std::int32_t {
    Success = 100, ///< The operation succeeded.
    Failure = 101, ///< The operation failed; the diagnostic log says why.
};

} // namespace Quorvex::Velmora::Common
