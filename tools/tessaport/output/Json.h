#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "tools/tessaport/output/JsonFwd.h"
#include "tools/tessaport/output/Output.h"

namespace Quorvex::Velmora::Tool
{

/// Reads a value. @throws Json::parse_error if the text is not JSON.
Json parseJson(std::string_view text);

/// Reads a value. @return a discarded value if the text is not JSON.
Json tryParseJson(std::string_view text);

/// Writes a value as one line that any terminal can show; see safeJson(). Bytes that are not UTF-8 become replacement
/// characters.
std::string toLine(const Json& value);

/// Writes an array with one element on each line.
///
/// The destructor closes the array if a failure cut it short, so that the output is always valid JSON. Messages appear
/// between the lines, never inside one.
class JsonList
{
public:
    explicit JsonList(Output& target);
    ~JsonList();
    JsonList(const JsonList&) = delete;
    JsonList& operator=(const JsonList&) = delete;

    void add(const Json& element);

    /// Adds an element that is one line of JSON already.
    void addLine(std::string_view element);
    void close();

private:
    Output& output;
    // The last element, held back until it is known whether a comma follows.
    std::string pending;
    bool closed = false;
};

} // namespace Quorvex::Velmora::Tool
