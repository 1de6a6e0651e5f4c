#include <velmora/native/MessageFormatting.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

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

/// The end of a line break tag ("<br>", "<br />", ...) that starts at `position`.
std::optional<std::size_t> endOfLineBreakTag(std::wstring_view text, std::size_t position) noexcept
{
    constexpr std::wstring_view Opening = L"<br";
    if (!startsWith(text, position, Opening))
        return std::nullopt;
    std::size_t end = skipWhile(text, position + Opening.size(), isSpace);
    if (end < text.size() && text[end] == L'/')
        ++end;
    if (end == text.size() || text[end] != L'>')
        return std::nullopt;
    return end + 1;
}

/// The end of what separates words at `position`: white space, an escaped space or a line break tag.
std::optional<std::size_t> endOfSeparator(std::wstring_view text, std::size_t position) noexcept
{
    constexpr std::wstring_view EscapedSpace = L"&nbsp;";
    const wchar_t first = text[position];
    if (isSpace(first))
        return position + 1;
    if (first == L'&')
        return startsWith(text, position, EscapedSpace) ? std::optional(position + EscapedSpace.size()) : std::nullopt;
    return first == L'<' ? endOfLineBreakTag(text, position) : std::nullopt;
}

/// The end of an address's opening at `position`; any character may follow "www".
std::optional<std::size_t> endOfOpening(std::wstring_view text, std::size_t position) noexcept
{
    for (const std::wstring_view scheme : {std::wstring_view(L"http://"), std::wstring_view(L"https://")}) {
        if (startsWith(text, position, scheme))
            return position + scheme.size();
    }
    const std::size_t wildcard = position + 3;
    if (wildcard < text.size() && startsWith(text, position, L"www") && !isLineTerminator(text[wildcard]))
        return wildcard + 1;
    return std::nullopt;
}

/// The end of an address whose body starts at `body`: it takes one character at least, and ends where nothing but
/// punctuation stands before a separator or the end of the text. A white space is always such a place.
std::size_t endOfAddress(std::wstring_view text, std::size_t body) noexcept
{
    for (std::size_t end = body + 1;; ++end) {
        const std::size_t afterPunctuation = skipWhile(text, end, isTrailingPunctuation);
        if (afterPunctuation == text.size() || endOfSeparator(text, afterPunctuation))
            return end;
        end = afterPunctuation;
    }
}

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// The address behind a separator that ends at `position`, if one follows it there.
std::optional<Range> addressBehind(std::wstring_view text, std::size_t position) noexcept
{
    const std::size_t begin = skipWhile(text, position, isQuote);
    const auto body = endOfOpening(text, begin);
    if (!body || *body == text.size() || isSpace(text[*body]))
        return std::nullopt;
    return Range{begin, endOfAddress(text, *body)};
}

std::size_t skipToSeparatorStart(std::wstring_view text, std::size_t position) noexcept
{
    return skipWhile(text, position, [](wchar_t c) { return c != L'&' && c != L'<' && !isSpace(c); });
}

/// The first address at or behind `position` that a separator there leads to.
std::optional<Range> findAddress(std::wstring_view text, std::size_t position) noexcept
{
    for (position = skipToSeparatorStart(text, position); position < text.size();
         position = skipToSeparatorStart(text, position + 1)) {
        const auto separatorEnd = endOfSeparator(text, position);
        const auto address = separatorEnd ? addressBehind(text, *separatorEnd) : std::nullopt;
        if (address)
            return address;
    }
    return std::nullopt;
}

void appendLink(std::wstring& target, std::wstring_view address)
{
    target.append(L"<a href=\"").append(address).append(L"\">").append(address).append(L"</a>");
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
    result.reserve(text.size());
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
    std::wstring result;
    result.reserve(text.size());
    std::size_t copied = 0;
    // The start of the text counts as a separator.
    auto address = addressBehind(text, 0);
    if (!address)
        address = findAddress(text, 0);
    for (; address; address = findAddress(text, copied)) {
        result.append(text, copied, address->begin - copied);
        appendLink(result, text.substr(address->begin, address->end - address->begin));
        copied = address->end;
    }
    result.append(text, copied);
    return result;
}

} // namespace Quorvex::Velmora::TessaportAPI
