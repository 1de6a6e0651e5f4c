/// The outcome for one key of a batch lookup.
#pragma once

#include <cstdint>

namespace Quorvex::Velmora::TessaportAPI
{

/// Numbered as the sync application numbers it; values without a name here are failures of that one key.
enum class Result : std::int32_t {
    Success = 1, ///< The key was resolved.
    Offline = 4, ///< The drive that holds the key is offline.
};

} // namespace Quorvex::Velmora::TessaportAPI
