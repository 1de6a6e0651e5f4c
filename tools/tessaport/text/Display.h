#pragma once

#include <string>
#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// Replaces each control character by `?`, line breaks included, so that text stays one line.
std::string asOneLine(std::string_view text);

/// Replaces line breaks by spaces: a sentence of several lines becomes one line.
std::string joinedLines(std::string_view text);

/// Replaces by `?` whatever could command a terminal or make text look like other text: control characters other than
/// line feeds and tabs, bidirectional overrides, characters without a width, and bytes that are not UTF-8.
std::string safeForTerminal(std::string_view text);

/// Writes the same characters of a JSON document as `\u` escapes: any terminal can show the document, and a parser
/// reads the same values.
std::string safeJson(std::string_view json);

} // namespace Quorvex::Velmora::Tool
