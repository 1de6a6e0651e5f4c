/// Plain messages as HTML for a rich-text message box.
#pragma once

#include <string>

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Escapes a plain message: "<", ">", spaces and line feeds become "&lt;", "&gt;", "&nbsp;" and "<br>". The ampersand
/// stays, so that entities pass through.
VELMORA_API std::wstring toHtml(const std::wstring& text);

/// Turns the web addresses in the output of toHtml() into links.
///
/// An address starts with "http://", "https://" or "www" and one character more, stands at the start of the text or
/// behind white space, "&nbsp;" or "<br>" (quotes may stand between), and ends before the next of these; punctuation
/// and quotes at its end stay outside the link. White space is the six ASCII characters.
VELMORA_API std::wstring linkify(const std::wstring& html);

/// Replaces every `from` in `text`, from left to right; what was put in is not searched again.
///
/// @return the number of replacements; 0 for an empty `from`.
VELMORA_API int replaceAll(std::wstring& text, const std::wstring& from, const std::wstring& to);

} // namespace Quorvex::Velmora::TessaportAPI
