#pragma once

#include <cstdint>

namespace Quorvex::Velmora::TessaportAPI
{

/// The outcome for one key of a batch lookup.
///
/// The numbers are those of the sync application. A value without a name here is a failure of that one key.
enum class Result : std::int32_t {
    Success = 1, ///< The key was found.
    Offline = 4, ///< The drive that holds the key is offline.
};

} // namespace Quorvex::Velmora::TessaportAPI
