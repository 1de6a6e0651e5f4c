// Reads the output of toRichText with an HTML parser.
#pragma once

#include <string>
#include <vector>

namespace Quorvex::Velmora::TestSupport
{

struct ParsedLink {
    std::wstring address;
    std::wstring text;
};

struct ParsedHtml {
    /// The text content, with a line feed for each line break.
    std::wstring text;
    std::vector<ParsedLink> links;
    /// Describes each node that is not the paragraph, a link with an address, a line break or a string in them.
    std::vector<std::string> surprises;
};

/// @param html  what UTF-8 cannot represent becomes U+FFFD.
ParsedHtml parseHtml(const std::wstring& html);

/// Returns the text content that the parser must find for a message, if spaces that do not break count as spaces.
std::wstring expectedText(const std::wstring& message);

/// Replaces each space that does not break by a space.
std::wstring withPlainSpaces(std::wstring text);

} // namespace Quorvex::Velmora::TestSupport
