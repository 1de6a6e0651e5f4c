#include "velmora/native/MessageFormatting.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <velmora/native/WebAddresses.h>
#include <velmora/platform/LargeText.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

constexpr std::size_t NotFound = std::wstring_view::npos;

/// Finds a pattern in linear time, even where pattern and text repeat themselves. std::wstring::find is quadratic
/// there: see the test ReplaceAll.IsLinearForRepetitiveTexts.
class Searcher
{
public:
    /// @param pattern  must not be empty, and must outlive the searcher.
    explicit Searcher(std::wstring_view pattern) : pattern(pattern), borders(pattern.size())
    {
        for (std::size_t i = 1, border = 0; i < pattern.size(); ++i) {
            border = extend(border, pattern[i]);
            borders[i] = border;
        }
    }

    [[nodiscard]] std::size_t find(std::wstring_view text, std::size_t start) const noexcept
    {
        std::size_t matched = 0;
        for (std::size_t i = start; i < text.size(); ++i) {
            if (matched == 0) {
                i = text.find(pattern.front(), i);
                if (i == NotFound)
                    return NotFound;
            }
            matched = extend(matched, text[i]);
            if (matched == pattern.size())
                return i + 1 - matched;
        }
        return NotFound;
    }

private:
    /// Returns how many characters of the pattern are matched when `next` follows `matched` characters of it.
    [[nodiscard]] std::size_t extend(std::size_t matched, wchar_t next) const noexcept
    {
        while (matched > 0 && pattern[matched] != next)
            matched = borders[matched - 1];
        return pattern[matched] == next ? matched + 1 : 0;
    }

    std::wstring_view pattern;
    // For each prefix of the pattern, the length of the longest shorter string that it both begins and ends with.
    std::vector<std::size_t> borders;
};

std::wstring_view sliceOf(std::wstring_view text, const Range& range) noexcept
{
    return text.substr(range.begin, range.end - range.begin);
}

constexpr std::wstring_view LinkStart = L"<a href=\"";
constexpr std::wstring_view LinkMiddle = L"\">";
constexpr std::wstring_view LinkEnd = L"</a>";

/// Appends many short parts to a string. Each append to a string is a call, which costs more than copying twice.
class PartWriter
{
public:
    explicit PartWriter(std::wstring& target) noexcept : target(target) {}

    void write(std::wstring_view part)
    {
        if (part.size() > parts.size() - used) {
            flush();
            if (part.size() > parts.size()) {
                target.append(part);
                return;
            }
        }
        std::copy(part.begin(), part.end(), parts.begin() + static_cast<std::ptrdiff_t>(used));
        used += part.size();
    }

    void flush()
    {
        target.append(parts.data(), used);
        used = 0;
    }

private:
    std::wstring& target;
    std::array<wchar_t, 1024> parts;
    std::size_t used = 0;
};

std::size_t sizeWithLinks(std::wstring_view text, const std::vector<Range>& addresses) noexcept
{
    std::size_t size = text.size();
    for (const Range& address : addresses)
        size += LinkStart.size() + (address.end - address.begin) + LinkMiddle.size() + LinkEnd.size();
    return size;
}

// A template, so that compilers do not warn about a comparison with 16 bits that is always false.
template <class Char>
bool isBeyondUnicode([[maybe_unused]] Char c) noexcept
{
    if constexpr (sizeof(Char) > sizeof(char16_t))
        return static_cast<std::uint32_t>(c) > 0x10FFFF;
    else
        return false;
}

/// Returns whether `position` is that of a character with a glyph of its own.
bool isVisible(std::wstring_view text, std::size_t position) noexcept
{
    return position < text.size() && !isWhiteSpace(text[position]);
}

/// Writes parts of a plain message as HTML.
class RichTextWriter
{
public:
    RichTextWriter(std::wstring_view message, std::wstring& html) noexcept : message(message), html(html) {}

    void writeText(const Range& range)
    {
        write(range, [this](std::size_t position) { return displayed(position); });
    }

    void writeLink(const Range& address)
    {
        html.append(LinkStart);
        write(address, [this](std::size_t position) { return escaped(position); });
        html.append(LinkMiddle);
        writeText(address);
        html.append(LinkEnd);
    }

private:
    /// What replaces a character; nothing if the character stays.
    using Replacement = std::optional<std::wstring_view>;

    template <class Replace>
    void write(const Range& range, Replace replacementAt)
    {
        std::size_t written = range.begin;
        for (std::size_t position = range.begin; position < range.end; ++position) {
            if (const Replacement replacement = replacementAt(position)) {
                html.append(message, written, position - written).append(*replacement);
                written = position + 1;
            }
        }
        html.append(message, written, range.end - written);
    }

    /// @return what replaces a character in an attribute.
    [[nodiscard]] Replacement escaped(std::size_t position) const noexcept
    {
        const wchar_t c = message[position];
        switch (c) {
        case L'&':
            return L"&amp;";
        case L'<':
            return L"&lt;";
        case L'>':
            return L"&gt;";
        case L'"':
            return L"&quot;";
        case L'\'':
            return L"&#39;";
        case L'\r':
            // Parsers read the character itself as a line feed.
            return L"&#13;";
        case L'\0':
            return L"\xFFFD";
        default:
            return isBeyondUnicode(c) ? Replacement(L"\xFFFD") : std::nullopt;
        }
    }

    /// @return what replaces a character outside attributes.
    [[nodiscard]] Replacement displayed(std::size_t position) const noexcept
    {
        switch (message[position]) {
        case L' ':
            return staysSpace(position) ? std::nullopt : Replacement(L"&nbsp;");
        case L'\n':
            return L"<br>";
        case L'\r':
            return isLineFeed(position + 1) ? L"" : escaped(position);
        default:
            return escaped(position);
        }
    }

    // Views drop a space beside other white space and at either end of a line.
    [[nodiscard]] bool staysSpace(std::size_t position) const noexcept
    {
        return position > 0 && isVisible(message, position - 1) && isVisible(message, position + 1);
    }

    [[nodiscard]] bool isLineFeed(std::size_t position) const noexcept
    {
        return position < message.size() && message[position] == L'\n';
    }

    std::wstring_view message;
    std::wstring& html;
};

constexpr std::wstring_view ParagraphStart = L"<p>";
constexpr std::wstring_view ParagraphEnd = L"</p>";

} // namespace

int replaceAll(std::wstring& text, const std::wstring& from, const std::wstring& to)
{
    if (from.empty())
        return 0;
    const Searcher searcher(from);
    std::size_t hit = searcher.find(text, 0);
    if (hit == NotFound)
        return 0;
    std::wstring result;
    Common::reserveLarge(result, text.size());
    std::size_t copied = 0;
    int count = 0;
    for (; hit != NotFound; hit = searcher.find(text, copied)) {
        result.append(text, copied, hit - copied).append(to);
        copied = hit + from.size();
        ++count;
    }
    result.append(text, copied);
    text = std::move(result);
    return count;
}

std::wstring toHtml(const std::wstring& text)
{
    std::wstring html = text;
    replaceAll(html, L"<", L"&lt;");
    replaceAll(html, L">", L"&gt;");
    replaceAll(html, L" ", L"&nbsp;");
    replaceAll(html, L"\n", L"<br>");
    return html;
}

std::wstring linkify(const std::wstring& html)
{
    const std::wstring_view text = html;
    const std::vector<Range> addresses = findAddressesInHtml(text);
    std::wstring result;
    Common::reserveLarge(result, sizeWithLinks(text, addresses));
    PartWriter writer(result);
    std::size_t copied = 0;
    for (const Range& range : addresses) {
        const std::wstring_view address = sliceOf(text, range);
        writer.write(text.substr(copied, range.begin - copied));
        writer.write(LinkStart);
        writer.write(address);
        writer.write(LinkMiddle);
        writer.write(address);
        writer.write(LinkEnd);
        copied = range.end;
    }
    writer.flush();
    result.append(text, copied);
    return result;
}

std::wstring toRichText(const std::wstring& message)
{
    const std::vector<Range> addresses = findAddresses(message);
    std::wstring html;
    Common::reserveLarge(html, ParagraphStart.size() + sizeWithLinks(message, addresses) + ParagraphEnd.size());
    html.append(ParagraphStart);
    RichTextWriter writer(message, html);
    std::size_t written = 0;
    for (const Range& address : addresses) {
        writer.writeText({written, address.begin});
        writer.writeLink(address);
        written = address.end;
    }
    writer.writeText({written, message.size()});
    html.append(ParagraphEnd);
    return html;
}

} // namespace Quorvex::Velmora::TessaportAPI
