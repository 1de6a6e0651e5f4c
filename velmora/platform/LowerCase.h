// Lower case for comparisons that ignore case. Internal.
#pragma once

#include <string>

namespace Quorvex::Velmora::Common
{

/// Maps every character to lower case by the rules of Unicode, whatever the process's locale: most hosts run in the C
/// locale, which covers ASCII only.
[[nodiscard]] std::wstring toLower(const std::wstring& text);

} // namespace Quorvex::Velmora::Common
