// Defines linkify by a regular expression of the standard library. For short strings only, because it recurses.
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
        // The six white-space characters by name, because "\\s" depends on the tables of the platform.
        result.assign(L"((?:^|[ \t\n\v\f\r]|&nbsp;|<br[ \t\n\v\f\r]*/?>)[\"']*)"
                      L"((?:http://|www.|https://)[^ \t\n\v\f\r]+?)"
                      L"(?=[.,:;?\"']*(?:$|[ \t\n\v\f\r]|&nbsp;|<br[ \t\n\v\f\r]*/?>))");
        return result;
    }();
    return std::regex_replace(html, expression, L"$1<a href=\"$2\">$2</a>");
}

} // namespace Quorvex::Velmora::TestSupport
