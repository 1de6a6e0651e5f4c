#include "tools/tessaport/logs/LogRecord.h"

#include <algorithm>
#include <sstream>

#include <velmora/logging/QVJsonParser.h>
#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr int DeepestNesting = 1000;

struct TooDeep {
};

bool isWrittenAsItIs(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ' ' || c == '_' ||
           c == '-' || c == '.' || c == ':';
}

std::string longestPlainPart(const std::string& text)
{
    std::string longest;
    std::string part;
    for (const char c : text) {
        if (isWrittenAsItIs(c))
            part += c;
        else
            part.clear();
        if (part.size() > longest.size())
            longest = part;
    }
    return longest;
}

std::string textOf(const Json& value) { return value.is_string() ? value.get<std::string>() : toLine(value); }

bool needsQuotes(const std::string& text) { return text.empty() || text.find_first_of(" \"=") != std::string::npos; }

void appendReadable(std::string& line, const std::string& key, const Json& value)
{
    if (value.is_object() && !value.empty()) {
        for (const auto& [name, inner] : value.items())
            appendReadable(line, key.empty() ? name : std::string(key).append(".").append(name), inner);
        return;
    }
    const std::string text = textOf(value);
    line.append(line.empty() ? "" : " ").append(key).append("=").append(needsQuotes(text) ? toLine(text) : text);
}

} // namespace

std::optional<Json> parseRecord(std::string_view line)
{
    const auto stopWhenTooDeep = [](int depth, Json::parse_event_t, Json&) {
        if (depth > DeepestNesting)
            throw TooDeep{};
        return true;
    };
    try {
        Json record = Json::parse(line.begin(), line.end(), stopWhenTooDeep, false);
        return record.is_object() ? std::optional(std::move(record)) : std::nullopt;
    } catch (const TooDeep&) {
        return std::nullopt;
    }
}

std::string readable(const Json& record)
{
    std::string line;
    const auto timestamp = record.find("timestamp");
    const bool hasTime = timestamp != record.end() && timestamp->is_string();
    if (hasTime)
        line = timestamp->get<std::string>();
    for (const auto& [name, value] : record.items()) {
        if (!hasTime || name != "timestamp")
            appendReadable(line, name, value);
    }
    return line;
}

RecordFilter::RecordFilter(const std::string& condition)
{
    const std::size_t equals = condition.find('=');
    if (equals == 0 || equals == std::string::npos)
        throw Failure(ExitCode::Usage, "'" + condition + "' is not of the form KEY=VALUE");
    key = toWide(toQVString(condition.substr(0, equals)));
    value = toWide(toQVString(condition.substr(equals + 1)));
    plainPart = longestPlainPart(condition.substr(equals + 1));
}

// Writers may escape any character of the plain part. All of them are below U+0100.
bool RecordFilter::mayMatch(std::string_view line) const
{
    return line.find(plainPart) != std::string_view::npos || line.find("\\u00") != std::string_view::npos;
}

bool RecordFilter::matches(std::string_view line) const
{
    std::wistringstream stream(toWide(toQVString(line)));
    std::wstring found;
    return Logging::QVJsonParser(stream).getString(key, found) && found == value;
}

} // namespace Quorvex::Velmora::Tool
