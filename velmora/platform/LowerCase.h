// Lower case for comparisons. Internal.
#pragma once

#include <string>

namespace Quorvex::Velmora::Common
{

/// Every character through the standard mapping to lower case, as it is for Unicode: hosts mostly run in the C locale,
/// which knows of ASCII only.
[[nodiscard]] std::wstring toLower(const std::wstring& text);

} // namespace Quorvex::Velmora::Common
