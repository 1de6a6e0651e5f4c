/// The status that some static operations return.
#pragma once

#include <cstdint>

namespace Quorvex::Velmora::Common
{

enum class QVCode : std::int32_t {
    Success = 100, ///< The operation succeeded and its output parameters are filled.
    Failure = 101, ///< The operation failed; the reason went to the diagnostic log.
};

} // namespace Quorvex::Velmora::Common
