#include "velmora/native/DiagnosticLog.h"

#include <cstddef>

#include <velmora/api/QVString.h>
#include <velmora/platform/QVLog.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

const std::string TP_PREFIX = "[TP] ";
const std::wstring LTP_PREFIX = L"[TP] ";
const std::string ERROR_STR = "ERROR: ";
const std::wstring LERROR_STR = L"ERROR: ";

constexpr std::size_t MaximumLength = 1000;

std::string truncate(const std::string& text, std::size_t length)
{
    return text.size() <= length ? text : text.substr(0, length) + "...";
}

std::wstring truncate(const std::wstring& text, std::size_t length)
{
    return text.size() <= length ? text : text.substr(0, length) + L"...";
}

template <class String>
void write(const String& line, bool flag)
{
    Common::QVLog::getLogFile()->addMessage(Common::QVString(truncate(line, MaximumLength).c_str()), flag);
}

std::wstring widenedByByte(const char* text)
{
    std::wstring wide;
    for (; *text != '\0'; ++text)
        wide.push_back(static_cast<wchar_t>(static_cast<unsigned char>(*text)));
    return wide;
}

} // namespace

void logMessage(const std::string& text, bool flag) { write(TP_PREFIX + text, flag); }

void logMessage(const std::wstring& text, bool flag) { write(LTP_PREFIX + text, flag); }

void logErrorText(const std::string& text, bool flag) { logMessage(ERROR_STR + text, flag); }

void logErrorText(const std::wstring& text, bool flag) { logMessage(LERROR_STR + text, flag); }

void logError(const std::wstring& text, const std::exception& exception, bool flag)
{
    logMessage(LERROR_STR + text + L" - " + widenedByByte(exception.what()), flag);
}

} // namespace Quorvex::Velmora::TessaportAPI
