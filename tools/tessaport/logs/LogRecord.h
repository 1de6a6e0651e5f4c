// One line of a JSON log.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/tessaport/output/Json.h"

namespace Quorvex::Velmora::Tool
{

/// The record on a line; nothing when the line is no JSON object, or is nested deeper than a log ever is.
std::optional<Json> parseRecord(std::string_view line);

/// A record for people: the time first, then the other values as key=value, nested ones with dots.
std::string readable(const Json& record);

/// Looks for records in which a key has a value.
class RecordFilter
{
public:
    /// @param condition  KEY=VALUE, where dots in the key lead into nested objects. @throws Failure for another form.
    explicit RecordFilter(const std::string& condition);

    /// A quick look: false when the line cannot hold the value.
    [[nodiscard]] bool mayMatch(std::string_view line) const;

    /// Reads the line as a record and compares.
    [[nodiscard]] bool matches(std::string_view line) const;

private:
    std::wstring key;
    std::wstring value;
    // Part of the value that stands in the line as it is, whatever of the rest is escaped.
    std::string plainPart;
};

} // namespace Quorvex::Velmora::Tool
