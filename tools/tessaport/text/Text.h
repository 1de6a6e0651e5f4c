// The tool's own texts are UTF-8 std::string; the library's are QVString.
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

/// Lower case of the letters A to Z; other characters stay.
std::string asciiLower(std::string_view text);

/// The number of characters, not of bytes.
std::size_t characterCount(std::string_view text);

/// "1 file", "2 files".
std::string counted(std::size_t count, const std::string& noun);

} // namespace Quorvex::Velmora::Tool
