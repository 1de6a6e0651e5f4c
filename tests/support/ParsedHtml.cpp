#include "tests/support/ParsedHtml.h"

#include <algorithm>
#include <cstddef>
#include <memory>

#include <gumbo.h>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

struct OutputDeleter {
    void operator()(GumboOutput* output) const { gumbo_destroy_output(&kGumboDefaultOptions, output); }
};

std::vector<const GumboNode*> childrenOf(const GumboNode& node)
{
    const GumboVector& children = node.v.element.children;
    std::vector<const GumboNode*> result;
    for (unsigned i = 0; i < children.length; ++i)
        result.push_back(static_cast<const GumboNode*>(children.data[i]));
    return result;
}

bool isElement(const GumboNode& node, GumboTag tag)
{
    return node.type == GUMBO_NODE_ELEMENT && node.v.element.tag == tag;
}

bool isString(const GumboNode& node) { return node.type == GUMBO_NODE_TEXT || node.type == GUMBO_NODE_WHITESPACE; }

// The parser replaces control characters and code points that are never assigned.
bool isReplacedByTheParser(char32_t c)
{
    const bool isSpace = c == U'\t' || c == U'\n' || c == U'\f' || c == U'\r';
    const bool isControl = (c < 0x20 && !isSpace) || (c >= 0x7F && c <= 0x9F);
    return isControl || (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE;
}

class Reader
{
public:
    void readDocument(const GumboNode& root)
    {
        expectAttributes(root, 0);
        for (const GumboNode* const part : childrenOf(root)) {
            expectAttributes(*part, 0);
            if (isElement(*part, GUMBO_TAG_BODY))
                readBody(*part);
            else if (!isElement(*part, GUMBO_TAG_HEAD) || !childrenOf(*part).empty())
                surprise(*part);
        }
    }

    ParsedHtml result;

private:
    void readBody(const GumboNode& body)
    {
        const auto children = childrenOf(body);
        if (children.size() != 1)
            result.surprises.push_back(std::to_string(children.size()) + " nodes instead of one paragraph");
        for (const GumboNode* const child : children) {
            if (isElement(*child, GUMBO_TAG_P))
                readParagraph(*child);
            else
                surprise(*child);
        }
    }

    void readParagraph(const GumboNode& paragraph)
    {
        expectAttributes(paragraph, 0);
        for (const GumboNode* const child : childrenOf(paragraph)) {
            if (isElement(*child, GUMBO_TAG_A))
                readLink(*child);
            else if (isElement(*child, GUMBO_TAG_BR))
                readLineBreak(*child);
            else
                result.text += stringOf(*child);
        }
    }

    void readLineBreak(const GumboNode& lineBreak)
    {
        expectAttributes(lineBreak, 0);
        result.text += L'\n';
    }

    void readLink(const GumboNode& link)
    {
        expectAttributes(link, 1);
        ParsedLink parsed;
        if (const GumboAttribute* const address = gumbo_get_attribute(&link.v.element.attributes, "href"))
            parsed.address = Common::Unicode::fromUtf8(address->value);
        else
            surprise(link);
        for (const GumboNode* const child : childrenOf(link))
            parsed.text += stringOf(*child);
        result.text += parsed.text;
        result.links.push_back(std::move(parsed));
    }

    std::wstring stringOf(const GumboNode& node)
    {
        if (isString(node))
            return Common::Unicode::fromUtf8(node.v.text.text);
        surprise(node);
        return {};
    }

    void expectAttributes(const GumboNode& node, unsigned count)
    {
        if (node.type == GUMBO_NODE_ELEMENT && node.v.element.attributes.length != count)
            surprise(node);
    }

    void surprise(const GumboNode& node)
    {
        result.surprises.push_back(node.type == GUMBO_NODE_ELEMENT
                                       ? std::string("element ") + gumbo_normalized_tagname(node.v.element.tag) +
                                             " with " + std::to_string(node.v.element.attributes.length) + " attributes"
                                       : "node of type " + std::to_string(node.type));
    }
};

} // namespace

ParsedHtml parseHtml(const std::wstring& html)
{
    const std::string utf8 = Common::Unicode::toUtf8(html);
    const std::unique_ptr<GumboOutput, OutputDeleter> output(
        gumbo_parse_with_options(&kGumboDefaultOptions, utf8.data(), utf8.size()));
    Reader reader;
    reader.readDocument(*output->root);
    return reader.result;
}

std::wstring expectedText(const std::wstring& message)
{
    std::wstring text;
    for (std::size_t i = 0; i < message.size(); ++i) {
        if (message.compare(i, 2, L"\r\n") != 0)
            text += isReplacedByTheParser(static_cast<char32_t>(message[i])) ? L'\xFFFD' : message[i];
    }
    return withPlainSpaces(Common::Unicode::fromUtf8(Common::Unicode::toUtf8(text)));
}

std::wstring withPlainSpaces(std::wstring text)
{
    std::replace(text.begin(), text.end(), wchar_t{0xA0}, L' ');
    return text;
}

} // namespace Quorvex::Velmora::TestSupport
