#include "velmora/platform/LowerCase.h"

#include <cwctype>

#ifdef _WIN32
#include <windows.h>
#else
#include <locale.h>
#endif

namespace Quorvex::Velmora::Common
{
namespace
{

#ifdef _WIN32
std::wint_t lowered(std::wint_t c)
{
    const auto upper = static_cast<wchar_t>(c);
    wchar_t lower = upper;
    return LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &upper, 1, &lower, 1, nullptr, nullptr, 0) == 1 ? lower
                                                                                                                 : c;
}
#else
std::wint_t lowered(std::wint_t c)
{
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t());
    return unicode == locale_t() ? std::towlower(c) : towlower_l(c, unicode);
}
#endif

} // namespace

std::wstring toLower(const std::wstring& text)
{
    std::wstring result = text;
    for (wchar_t& c : result)
        c = static_cast<wchar_t>(lowered(static_cast<std::wint_t>(c)));
    return result;
}

} // namespace Quorvex::Velmora::Common
