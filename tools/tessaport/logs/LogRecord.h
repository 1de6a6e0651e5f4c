#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// Reads the record on one line of a JSON log.
///
/// @return nothing if the line is not a JSON object, or is nested deeper than any record.
std::optional<Json> parseRecord(std::string_view line);

/// Writes a record for people: the time first, then the other values as key=value. Keys of nested values have dots.
std::string readable(const Json& record);

/// Finds records in which a key has a value.
class RecordFilter
{
public:
    /// @param condition  KEY=VALUE; dots in the key lead into nested objects.
    /// @throws Failure for any other form.
    explicit RecordFilter(const std::string& condition);

    /// Checks quickly whether the line can contain the value at all.
    [[nodiscard]] bool mayMatch(std::string_view line) const;

    /// Parses the line and compares the decoded value.
    [[nodiscard]] bool matches(std::string_view line) const;

private:
    std::wstring key;
    std::wstring value;
    // The longest part of the value that writers do not need to escape.
    std::string plainPart;
};

} // namespace Quorvex::Velmora::Tool
