/// @file
/// Strings of the tool are UTF-8 in std::string; those of the library are QVString.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <velmora/api/Interop.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::Tool
{

using TessaportAPI::toQVString;
using TessaportAPI::toUtf8;
using TessaportAPI::toWide;

inline std::string toUtf8(const Common::QVUUID& id) { return toUtf8(id.getString()); }

/// Makes the letters A to Z lower case; other characters stay.
std::string asciiLower(std::string_view text);

/// The number of code points, not of bytes.
std::size_t characterCount(std::string_view text);

/// Reads a whole number; nothing if it is anything else.
std::optional<std::int64_t> toNumber(std::string_view text);

/// A number with its noun: "1 file", "2 files".
std::string counted(std::size_t count, const std::string& noun);

} // namespace Quorvex::Velmora::Tool
