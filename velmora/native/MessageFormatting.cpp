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

bool isSpace(wchar_t c) noexcept { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

bool isQuote(wchar_t c) noexcept { return c == L'"' || c == L'\''; }

bool isTrailingPunctuation(wchar_t c) noexcept
{
    return isQuote(c) || c == L'.' || c == L',' || c == L':' || c == L';' || c == L'?';
}

/// Returns whether an address continues after this character, whatever follows: it is not punctuation, and no separator
/// starts with it.
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

/// Returns whether a separator ends at `position` and starts at or after `floor`. The start of the text counts as one.
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

/// Returns the first position, not before `position`, where an opening is possible: one with "ww" or ":/".
std::size_t findHint(std::wstring_view text, std::size_t position) noexcept
{
    const auto is = [&text](std::size_t i, wchar_t c) { return static_cast<int>(text[i] == c); };
    const auto isHint = [&is](std::size_t i) {
        return (is(i, L'w') & is(i + 1, L'w')) | (is(i, L':') & is(i + 1, L'/'));
    };
    // Compilers turn the loop that skips blocks without a hint into vector instructions.
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

/// Returns the opening of an address: "http://", "https://", or "www" and any character.
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

/// Returns the end of an address whose body starts at `body`. The body has at least one character, and ends where only
/// punctuation precedes a separator or the end of the text.
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

/// Returns the address with an opening at `hint`, unless what precedes it starts before `floor`.
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
