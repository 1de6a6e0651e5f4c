/// @file
/// Functions that turn plain messages into HTML for a rich-text message box.
#pragma once

#include <string>

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Escapes a plain message: "<", ">", spaces and line feeds become "&lt;", "&gt;", "&nbsp;" and "<br>".
///
/// @note Kept for compatibility: ampersands are not escaped, so entities in the message take effect.
VELMORA_API std::wstring toHtml(const std::wstring& text);

/// Turns the web addresses in the output of toHtml() into links.
///
/// An address begins with "http://", "https://" or "www" and one more character, at the start of the text or after
/// white space, "&nbsp;" or "<br>", with or without quotes in between. It ends before the next of these separators;
/// punctuation and quotes at its end stay outside the link. White space is one of the six ASCII characters.
///
/// @note Kept for compatibility: after "www" any character takes the place of the dot.
VELMORA_API std::wstring linkify(const std::wstring& html);

/// Turns a plain message into one paragraph of HTML, `<p>…</p>`, which a rich-text view displays as the message.
///
/// Nothing in the message becomes markup: the only tags are `p`, `a` and `br`, and the only attribute is `href`.
///
/// - Web addresses become links by the rules of linkify(), with white space as the only separator. They are searched in
///   the message itself, before it is escaped; `href` contains the address as it is in the message.
/// - A space between two visible characters stays a space, so that lines wrap. The spaces of a row, beside other white
///   space, and at either end of a line become "&nbsp;".
/// - Line feeds become `<br>`. A carriage return before a line feed is left out.
/// - U+0000 and values that are no Unicode code points become U+FFFD.
///
/// The result is at most 12 times as long as the message, plus 7 characters. Any thread may call this.
VELMORA_API std::wstring toRichText(const std::wstring& message);

/// Replaces every occurrence of `from` in `text`, from left to right. Replacements are not searched again.
///
/// @return the number of replacements; 0 if `from` is empty.
VELMORA_API int replaceAll(std::wstring& text, const std::wstring& from, const std::wstring& to);

} // namespace Quorvex::Velmora::TessaportAPI
