#include "tools/tessaport/text/Wildcard.h"

#include <string>

#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

std::size_t characterLength(std::string_view text, std::size_t position)
{
    std::size_t length = 1;
    while (position + length < text.size() && (static_cast<unsigned char>(text[position + length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

} // namespace

bool matchesWildcard(std::string_view patternAsGiven, std::string_view nameAsGiven)
{
    const std::string pattern = asciiLower(patternAsGiven);
    const std::string name = asciiLower(nameAsGiven);
    std::size_t p = 0;
    std::size_t n = 0;
    // Where to go on when what follows the last star does not fit: the star then swallows one byte more.
    std::size_t afterStar = std::string::npos;
    std::size_t swallowed = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            afterStar = ++p;
            swallowed = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            n += characterLength(name, n);
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (afterStar != std::string::npos) {
            p = afterStar;
            n = swallowed += characterLength(name, swallowed);
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

} // namespace Quorvex::Velmora::Tool
