#include "tools/tessaport/output/Json.h"

namespace Quorvex::Velmora::Tool
{

std::string toLine(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

JsonList::JsonList(Output& target) : output(target) { output.write("["); }

JsonList::~JsonList()
{
    try {
        close();
    } catch (...) {
        // Standard output is gone; the failure that is under way says more.
    }
}

void JsonList::add(const Json& element) { addLine(toLine(element)); }

void JsonList::addLine(std::string_view element)
{
    output.write(empty ? "\n" : ",\n");
    output.write(element);
    empty = false;
}

void JsonList::close()
{
    if (closed)
        return;
    closed = true;
    output.write("\n]\n");
}

} // namespace Quorvex::Velmora::Tool
