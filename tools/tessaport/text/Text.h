/// @file
/// Strings of the tool are UTF-8 in std::string; those of the library are QVString.
#pragma once

#include <string>
#include <string_view>

#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::Tool
{

inline std::string utf8(const Common::QVString& text) { return text.c_str(); }

inline std::string utf8(const std::wstring& text) { return Common::QVString(text.c_str()).c_str(); }

inline std::string utf8(const Common::QVUUID& id) { return id.getString().c_str(); }

inline std::wstring wide(const std::string& text) { return Common::QVString(text.c_str()).w_str(); }

inline Common::QVString libraryText(const std::string& text) { return text.c_str(); }

/// Makes the letters A to Z lower case; other characters stay.
std::string asciiLower(std::string_view text);

/// The number of code points, not of bytes.
std::size_t characterCount(std::string_view text);

/// A number with its noun: "1 file", "2 files".
std::string counted(std::size_t count, const std::string& noun);

} // namespace Quorvex::Velmora::Tool
