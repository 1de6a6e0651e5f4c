#include "velmora/native/MessageFormatting.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <velmora/platform/LargeText.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

constexpr std::size_t NotFound = std::wstring_view::npos;

/// Finds a text in others. Never looks at a character twice as often as it must, however the texts repeat themselves.
class Searcher
{
public:
    /// @param pattern  is not empty, and outlives the searcher.
    explicit Searcher(std::wstring_view pattern) : m_pattern(pattern), m_borders(pattern.size())
    {
        for (std::size_t i = 1, border = 0; i < pattern.size(); ++i) {
            border = extend(border, pattern[i]);
            m_borders[i] = border;
        }
    }

    [[nodiscard]] std::size_t find(std::wstring_view text, std::size_t start) const noexcept
    {
        std::size_t matched = 0;
        for (std::size_t i = start; i < text.size(); ++i) {
            if (matched == 0) {
                i = text.find(m_pattern.front(), i);
                if (i == NotFound)
                    return NotFound;
            }
            matched = extend(matched, text[i]);
            if (matched == m_pattern.size())
                return i + 1 - matched;
        }
        return NotFound;
    }

private:
    /// How much of the pattern is matched when `next` follows on `matched` characters of it.
    [[nodiscard]] std::size_t extend(std::size_t matched, wchar_t next) const noexcept
    {
        while (matched > 0 && m_pattern[matched] != next)
            matched = m_borders[matched - 1];
        return m_pattern[matched] == next ? matched + 1 : 0;
    }

    std::wstring_view m_pattern;
    // For each beginning of the pattern, the length of its longest proper part that both starts and ends it.
    std::vector<std::size_t> m_borders;
};

bool isSpace(wchar_t c) noexcept { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

bool isQuote(wchar_t c) noexcept { return c == L'"' || c == L'\''; }

bool isTrailingPunctuation(wchar_t c) noexcept
{
    return isQuote(c) || c == L'.' || c == L',' || c == L':' || c == L';' || c == L'?';
}

/// Whether an address goes on behind this character, whatever follows: it is no punctuation, and no separator starts
/// here.
bool isInsideAddress(wchar_t c) noexcept { return c > L'?' || (c > L'\'' && c != L',' && c != L'.' && c < L':'); }

bool isLineTerminator(wchar_t c) noexcept
{
    return c == L'\n' || c == L'\r' || c == wchar_t{0x2028} || c == wchar_t{0x2029};
}

bool startsWith(std::wstring_view text, std::size_t position, std::wstring_view prefix) noexcept
{
    return text.compare(position, prefix.size(), prefix) == 0;
}

template <class Predicate>
std::size_t skipWhile(std::wstring_view text, std::size_t position, Predicate predicate) noexcept
{
    while (position < text.size() && predicate(text[position]))
        ++position;
    return position;
}

bool endsWith(std::wstring_view text, std::wstring_view suffix) noexcept
{
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

// What separates words: white space, an escaped space, or a line break tag ("<br>", "<br />", ...).
constexpr std::wstring_view EscapedSpace = L"&nbsp;";
constexpr std::wstring_view LineBreakOpening = L"<br";

bool lineBreakTagStartsAt(std::wstring_view text, std::size_t position) noexcept
{
    if (!startsWith(text, position, LineBreakOpening))
        return false;
    std::size_t end = skipWhile(text, position + LineBreakOpening.size(), isSpace);
    if (end < text.size() && text[end] == L'/')
        ++end;
    return end < text.size() && text[end] == L'>';
}

/// @param text  ends with ">".
bool endsWithLineBreakTag(std::wstring_view text) noexcept
{
    text.remove_suffix(1);
    if (!text.empty() && text.back() == L'/')
        text.remove_suffix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return endsWith(text, LineBreakOpening);
}

bool separatorStartsAt(std::wstring_view text, std::size_t position) noexcept
{
    const wchar_t first = text[position];
    if (first == L'&')
        return startsWith(text, position, EscapedSpace);
    return first == L'<' ? lineBreakTagStartsAt(text, position) : isSpace(first);
}

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// Whether a separator ends at `position`, all of it at or behind `floor`. The start of the text counts as one.
bool separatorEndsAt(std::wstring_view text, std::size_t floor, std::size_t position) noexcept
{
    if (position == 0)
        return true;
    if (position == floor)
        return false;
    const std::wstring_view before = text.substr(floor, position - floor);
    if (isSpace(before.back()))
        return true;
    if (before.back() == L';')
        return endsWith(before, EscapedSpace);
    return before.back() == L'>' && endsWithLineBreakTag(before);
}

/// The first place at or behind `position` where an opening may stand: "ww" or ":/" is there.
std::size_t findHint(std::wstring_view text, std::size_t position) noexcept
{
    const auto is = [&text](std::size_t i, wchar_t c) { return static_cast<int>(text[i] == c); };
    const auto isHint = [&is](std::size_t i) {
        return (is(i, L'w') & is(i + 1, L'w')) | (is(i, L':') & is(i + 1, L'/'));
    };
    // Whole blocks without a hint are passed by a loop that compilers turn into vector instructions.
    constexpr std::size_t Block = 32;
    for (; text.size() - position > Block; position += Block) {
        int hints = 0;
        for (std::size_t i = 0; i < Block; ++i)
            hints |= isHint(position + i);
        if (hints == 0)
            continue;
        while (isHint(position) == 0)
            ++position;
        return position;
    }
    for (; position + 1 < text.size(); ++position) {
        if (isHint(position) != 0)
            return position;
    }
    return NotFound;
}

/// An address's opening: "http://", "https://", or "www" and any character.
std::optional<Range> openingAtHint(std::wstring_view text, std::size_t hint) noexcept
{
    if (text[hint] == L'w') {
        const std::size_t wildcard = hint + 3;
        if (wildcard < text.size() && text[hint + 2] == L'w' && !isLineTerminator(text[wildcard]))
            return Range{hint, wildcard + 1};
        return std::nullopt;
    }
    if (!startsWith(text, hint, L"://"))
        return std::nullopt;
    for (const std::wstring_view scheme : {std::wstring_view(L"http"), std::wstring_view(L"https")}) {
        if (endsWith(text.substr(0, hint), scheme))
            return Range{hint - scheme.size(), hint + 3};
    }
    return std::nullopt;
}

/// The end of an address whose body starts at `body`: it takes one character at least, and ends where nothing but
/// punctuation stands before a separator or the end of the text. A white space is always such a place.
std::size_t endOfAddress(std::wstring_view text, std::size_t body) noexcept
{
    for (std::size_t start = body + 1;;) {
        const std::size_t end = skipWhile(text, start, isInsideAddress);
        const std::size_t afterPunctuation = skipWhile(text, end, isTrailingPunctuation);
        if (afterPunctuation == text.size() || separatorStartsAt(text, afterPunctuation))
            return end;
        start = afterPunctuation + 1;
    }
}

/// The address whose opening is hinted at, none of whose context lies before `floor`.
std::optional<Range> addressAtHint(std::wstring_view text, std::size_t floor, std::size_t hint) noexcept
{
    const auto opening = openingAtHint(text, hint);
    if (!opening || opening->begin < floor)
        return std::nullopt;
    const std::size_t body = opening->end;
    if (body == text.size() || isSpace(text[body]))
        return std::nullopt;
    std::size_t context = opening->begin;
    while (context > floor && isQuote(text[context - 1]))
        --context;
    if (!separatorEndsAt(text, floor, context))
        return std::nullopt;
    return Range{opening->begin, endOfAddress(text, body)};
}

std::vector<Range> findAddresses(std::wstring_view text)
{
    std::vector<Range> addresses;
    std::size_t floor = 0;
    for (std::size_t hint = findHint(text, 0); hint != NotFound;) {
        if (const auto address = addressAtHint(text, floor, hint)) {
            addresses.push_back(*address);
            floor = address->end;
        }
        hint = findHint(text, std::max(floor, hint + 1));
    }
    return addresses;
}

constexpr std::wstring_view LinkStart = L"<a href=\"";
constexpr std::wstring_view LinkMiddle = L"\">";
constexpr std::wstring_view LinkEnd = L"</a>";

std::size_t sizeWithLinks(std::wstring_view text, const std::vector<Range>& addresses) noexcept
{
    std::size_t size = text.size();
    for (const Range& address : addresses)
        size += LinkStart.size() + (address.end - address.begin) + LinkMiddle.size() + LinkEnd.size();
    return size;
}

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
    const std::vector<Range> addresses = findAddresses(text);
    std::wstring result;
    Common::reserveLarge(result, sizeWithLinks(text, addresses));
    std::size_t copied = 0;
    for (const Range& range : addresses) {
        const std::wstring_view address = text.substr(range.begin, range.end - range.begin);
        result.append(text, copied, range.begin - copied);
        result.append(LinkStart).append(address).append(LinkMiddle).append(address).append(LinkEnd);
        copied = range.end;
    }
    result.append(text, copied);
    return result;
}

} // namespace Quorvex::Velmora::TessaportAPI
