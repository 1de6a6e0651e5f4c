#include "velmora/native/WebAddresses.h"

#include <algorithm>
#include <optional>

#include <velmora/native/AddressHints.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

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
    // Not by std::wstring_view::compare, which calls a function for a few characters.
    return text.size() - position >= prefix.size() && std::equal(prefix.begin(), prefix.end(), text.data() + position);
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
    return text.size() >= suffix.size() && startsWith(text, text.size() - suffix.size(), suffix);
}

constexpr std::wstring_view EscapedSpace = L"&nbsp;";
constexpr std::wstring_view LineBreakOpening = L"<br";

bool lineBreakTagStartsAt(std::wstring_view text, std::size_t position) noexcept
{
    if (!startsWith(text, position, LineBreakOpening))
        return false;
    std::size_t end = skipWhile(text, position + LineBreakOpening.size(), isWhiteSpace);
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
    while (!text.empty() && isWhiteSpace(text.back()))
        text.remove_suffix(1);
    return endsWith(text, LineBreakOpening);
}

/// What separates the words of a plain message. The start and the end of the text do so as well.
struct PlainSeparators {
    static bool startsAt(std::wstring_view text, std::size_t position) noexcept { return isWhiteSpace(text[position]); }

    /// @param before  the text up to a position; must not be empty.
    static bool endsAfter(std::wstring_view before) noexcept { return isWhiteSpace(before.back()); }
};

/// What separates the words of HTML: white space, an escaped space, or a line break tag ("<br>", "<br />", ...).
struct HtmlSeparators {
    static bool startsAt(std::wstring_view text, std::size_t position) noexcept
    {
        const wchar_t first = text[position];
        if (first == L'&')
            return startsWith(text, position, EscapedSpace);
        return first == L'<' ? lineBreakTagStartsAt(text, position) : isWhiteSpace(first);
    }

    static bool endsAfter(std::wstring_view before) noexcept
    {
        if (isWhiteSpace(before.back()))
            return true;
        if (before.back() == L';')
            return endsWith(before, EscapedSpace);
        return before.back() == L'>' && endsWithLineBreakTag(before);
    }
};

/// Returns whether a separator ends at `position` and starts at or after `floor`. The start of the text counts as one.
template <class Separators>
bool separatorEndsAt(std::wstring_view text, std::size_t floor, std::size_t position) noexcept
{
    if (position == 0)
        return true;
    return position != floor && Separators::endsAfter(text.substr(floor, position - floor));
}

/// Returns the opening of an address: "http://", "https://", or "www" and any character.
std::optional<Range> openingAtHint(std::wstring_view text, std::size_t hint) noexcept
{
    if (text[hint] == L'w') {
        const std::size_t wildcard = hint + 3;
        if (wildcard < text.size() && !isLineTerminator(text[wildcard]))
            return Range{hint, wildcard + 1};
        return std::nullopt;
    }
    for (const std::wstring_view scheme : {std::wstring_view(L"http"), std::wstring_view(L"https")}) {
        if (endsWith(text.substr(0, hint), scheme))
            return Range{hint - scheme.size(), hint + 3};
    }
    return std::nullopt;
}

/// Returns the end of an address whose body starts at `body`. The body has at least one character, and ends where only
/// punctuation precedes a separator or the end of the text.
template <class Separators>
std::size_t endOfAddress(std::wstring_view text, std::size_t body) noexcept
{
    for (std::size_t start = body + 1;;) {
        const std::size_t end = skipWhile(text, start, isInsideAddress);
        const std::size_t afterPunctuation = skipWhile(text, end, isTrailingPunctuation);
        if (afterPunctuation == text.size() || Separators::startsAt(text, afterPunctuation))
            return end;
        start = afterPunctuation + 1;
    }
}

/// Returns the address with an opening at `hint`, unless what precedes it starts before `floor`.
template <class Separators>
std::optional<Range> addressAtHint(std::wstring_view text, std::size_t floor, std::size_t hint) noexcept
{
    const auto opening = openingAtHint(text, hint);
    if (!opening || opening->begin < floor)
        return std::nullopt;
    const std::size_t body = opening->end;
    if (body == text.size() || isWhiteSpace(text[body]))
        return std::nullopt;
    std::size_t context = opening->begin;
    while (context > floor && isQuote(text[context - 1]))
        --context;
    if (!separatorEndsAt<Separators>(text, floor, context))
        return std::nullopt;
    return Range{opening->begin, endOfAddress<Separators>(text, body)};
}

template <class Separators>
std::vector<Range> addressesIn(std::wstring_view text)
{
    std::vector<Range> addresses;
    std::size_t floor = 0;
    AddressHints hints(text);
    for (std::size_t hint = hints.next(0); hint != AddressHints::NotFound;) {
        if (const auto address = addressAtHint<Separators>(text, floor, hint)) {
            addresses.push_back(*address);
            floor = address->end;
        }
        hint = hints.next(std::max(floor, hint + 1));
    }
    return addresses;
}

} // namespace

std::vector<Range> findAddresses(std::wstring_view message) { return addressesIn<PlainSeparators>(message); }

std::vector<Range> findAddressesInHtml(std::wstring_view html) { return addressesIn<HtmlSeparators>(html); }

} // namespace Quorvex::Velmora::TessaportAPI
