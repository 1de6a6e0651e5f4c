// Answers for machines.
#pragma once

#include <nlohmann/json.hpp>

#include "tools/tessaport/output/Output.h"

namespace Quorvex::Velmora::Tool
{

/// Keeps members in the order in which they were put.
using Json = nlohmann::ordered_json;

/// One line of JSON; text that is not valid UTF-8 gets replacement characters.
std::string toLine(const Json& value);

/// An array with one element on each line. Closed by close(), or by the destructor when a failure cuts it short, so
/// that what was printed is always valid.
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
    bool empty = true;
    bool closed = false;
};

} // namespace Quorvex::Velmora::Tool
