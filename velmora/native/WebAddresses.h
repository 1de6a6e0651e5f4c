// Finds web addresses in messages. Internal.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Quorvex::Velmora::TessaportAPI
{

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// Returns whether a character is one of the six ASCII white-space characters.
constexpr bool isWhiteSpace(wchar_t c) noexcept { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

/// Returns the addresses in a message, in their order. White space separates words.
std::vector<Range> findAddresses(std::wstring_view message);

/// Returns the addresses in the output of toHtml(), in their order. Escaped spaces and line break tags also separate
/// words.
std::vector<Range> findAddressesInHtml(std::wstring_view html);

} // namespace Quorvex::Velmora::TessaportAPI
