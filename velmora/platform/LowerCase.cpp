#include <velmora/platform/LowerCase.h>

#include <cwctype>

#ifndef _WIN32
#include <locale.h>
#endif

namespace Quorvex::Velmora::Common
{
namespace
{

#ifdef _WIN32
std::wint_t lowered(std::wint_t c) { return std::towlower(c); }
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
