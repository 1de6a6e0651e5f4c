#include "velmora/native/DiagnosticLog.h"

#include <cstddef>
#include <string>

#include <velmora/api/QVLog.h>
#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

constexpr std::wstring_view Prefix = L"[TP] ";
constexpr std::wstring_view ErrorPrefix = L"[TP] ERROR: ";
constexpr std::string_view NarrowPrefix = "[TP] ";
constexpr std::string_view NarrowErrorPrefix = "[TP] ERROR: ";

constexpr std::size_t MaximumLength = 1000;

void append(std::wstring& line, std::wstring_view part) { line.append(part); }

void append(std::string& line, const NarrowPart& part) { line.append(part.view()); }

// One character for each byte, whatever its encoding.
void append(std::wstring& line, const char* bytes)
{
    for (const char byte : std::string_view(bytes))
        line.push_back(static_cast<wchar_t>(static_cast<unsigned char>(byte)));
}

template <class Char>
void write(std::basic_string<Char>& line)
{
    if (line.size() > MaximumLength)
        line.replace(MaximumLength, line.size(), 3, Char{'.'});
    // This library gives the flag no meaning.
    Common::QVLog::getLogFile()->addMessage(Common::QVString(line.c_str()), false);
}

template <class Char, class Parts, class... Rest>
void tryToWrite(std::basic_string_view<Char> prefix, Parts text, Rest... rest) noexcept
{
    try {
        std::basic_string<Char> line(prefix);
        for (const auto& part : text)
            append(line, part);
        (append(line, rest), ...);
        write(line);
    } catch (...) {
    }
}

} // namespace

void logMessage(WideParts text) noexcept { tryToWrite(Prefix, text); }

void logMessage(NarrowParts text) noexcept { tryToWrite(NarrowPrefix, text); }

void logErrorText(WideParts text) noexcept { tryToWrite(ErrorPrefix, text); }

void logErrorText(NarrowParts text) noexcept { tryToWrite(NarrowErrorPrefix, text); }

void logError(WideParts text, const std::exception& exception) noexcept
{
    tryToWrite(ErrorPrefix, text, " - ", exception.what());
}

} // namespace Quorvex::Velmora::TessaportAPI
