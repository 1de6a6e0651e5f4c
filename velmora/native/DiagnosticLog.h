// The lines that this library writes to the host's log. Internal.
#pragma once

#include <exception>
#include <string>

namespace Quorvex::Velmora::TessaportAPI
{

/// "[TP] " and the text, cut after 1000 characters.
void logMessage(const std::string& text, bool flag);
void logMessage(const std::wstring& text, bool flag);

/// "[TP] ERROR: " and the text, cut alike.
void logErrorText(const std::string& text, bool flag);
void logErrorText(const std::wstring& text, bool flag);

/// "[TP] ERROR: ", the text, " - " and what() with each of its bytes as one character, cut alike.
void logError(const std::wstring& text, const std::exception& exception, bool flag);

} // namespace Quorvex::Velmora::TessaportAPI
