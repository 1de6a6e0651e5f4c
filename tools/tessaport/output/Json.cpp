#include "tools/tessaport/output/Json.h"

#include "tools/tessaport/text/Display.h"

namespace Quorvex::Velmora::Tool
{

Json parseJson(std::string_view text) { return Json::parse(text); }

Json tryParseJson(std::string_view text) { return Json::parse(text, nullptr, false); }

std::string toLine(const Json& value) { return safeJson(value.dump(-1, ' ', false, Json::error_handler_t::replace)); }

JsonList::JsonList(Output& target) : output(target) { output.write("[\n"); }

JsonList::~JsonList()
{
    try {
        close();
    } catch (...) {
        // Standard output is gone; the failure that is already propagating says more.
    }
}

void JsonList::add(const Json& element) { addLine(toLine(element)); }

void JsonList::addLine(std::string_view element)
{
    if (!pending.empty())
        output.write(pending + ",\n");
    pending = safeJson(element);
}

void JsonList::close()
{
    if (closed)
        return;
    closed = true;
    output.write(pending.empty() ? "]\n" : pending + "\n]\n");
}

} // namespace Quorvex::Velmora::Tool
