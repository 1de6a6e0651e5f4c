// Defines which addresses become links by a regular expression of the standard library. For short strings only, because
// it recurses.
#pragma once

#include <locale>
#include <regex>
#include <string>
#include <vector>

namespace Quorvex::Velmora::TestSupport
{

// The six white-space characters by name, because "\\s" depends on the tables of the platform.
inline std::wregex addressExpression(const std::wstring& separator)
{
    std::wregex result;
    result.imbue(std::locale::classic());
    result.assign(L"((?:^|" + separator +
                  L")[\"']*)"
                  L"((?:http://|www.|https://)[^ \t\n\v\f\r]+?)"
                  L"(?=[.,:;?\"']*(?:$|" +
                  separator + L"))");
    return result;
}

inline std::wstring linkifiedByExpression(const std::wstring& html)
{
    static const std::wregex expression = addressExpression(L"[ \t\n\v\f\r]|&nbsp;|<br[ \t\n\v\f\r]*/?>");
    return std::regex_replace(html, expression, L"$1<a href=\"$2\">$2</a>");
}

/// Returns the web addresses in a plain message.
inline std::vector<std::wstring> addressesByExpression(const std::wstring& message)
{
    static const std::wregex expression = addressExpression(L"[ \t\n\v\f\r]");
    std::vector<std::wstring> addresses;
    for (std::wsregex_iterator found(message.begin(), message.end(), expression), end; found != end; ++found)
        addresses.push_back((*found)[2]);
    return addresses;
}

} // namespace Quorvex::Velmora::TestSupport
