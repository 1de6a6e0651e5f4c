// The definition of linkify, by the standard library's regular expressions. For short texts: these recurse.
#pragma once

#include <locale>
#include <regex>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

inline std::wstring linkifiedByExpression(const std::wstring& html)
{
    static const std::wregex expression = [] {
        std::wregex result;
        result.imbue(std::locale::classic());
        result.assign(L"((?:^|\\s|&nbsp;|<br\\s*/?>)[\"']*)"
                      L"((?:http://|www.|https://)\\S+?)"
                      L"(?=[.,:;?\"']*(?:$|\\s|&nbsp;|<br\\s*/?>))");
        return result;
    }();
    return std::regex_replace(html, expression, L"$1<a href=\"$2\">$2</a>");
}

} // namespace Quorvex::Velmora::TestSupport
