#include "tools/tessaport/items/Outcomes.h"

#include <algorithm>

#include "tools/tessaport/output/Json.h"

namespace Quorvex::Velmora::Tool
{

Outcomes::Outcomes(Context& commandContext) : context(commandContext) {}

Outcomes::~Outcomes() = default;

bool Outcomes::isJson() const { return context.options.json; }

void Outcomes::done(
    const std::string& path, const std::string& what, const std::string& explanation, const Json& details)
{
    count(what);
    if (!isJson())
        return line(what + "  " + path + explanation);
    Json element{{"path", path}, {"outcome", what}};
    element.update(details);
    add(element);
}

void Outcomes::done(const std::string& path, const std::string& what, const std::string& explanation)
{
    done(path, what, explanation, Json::object());
}

void Outcomes::add(const Json& answer)
{
    if (!isQuiet)
        put([&] { list().add(answer); });
}

void Outcomes::line(const std::string& text)
{
    if (!isQuiet)
        put([&] { context.output.line(text); });
}

void Outcomes::failed(const std::string& subject, const std::string& reason, ExitCode code, const char* key)
{
    combine(worst, code);
    count("failed");
    if (isJson())
        add({{key, subject}, {"outcome", "failed"}, {"reason", reason}});
    put([&] { context.output.flush(); });
    context.output.message("'" + subject + "': " + reason);
}

void Outcomes::notFound(const Lookup& lookup) { failed(lookup.given, whyNotFound(lookup), ExitCode::NotFound); }

void Outcomes::failedAsAWhole(const std::string& reason)
{
    combine(worst, ExitCode::Failure);
    if (isJson())
        add({{"outcome", "failed"}, {"reason", reason}});
    put([&] { context.output.flush(); });
    context.output.message(reason);
}

std::string Outcomes::total() const
{
    std::string text;
    for (const auto& [what, number] : counts)
        text += (text.empty() ? "" : ", ") + std::to_string(number) + ' ' + what;
    return text;
}

void Outcomes::count(const std::string& what)
{
    const auto found =
        std::find_if(counts.begin(), counts.end(), [&what](const auto& entry) { return entry.first == what; });
    if (found == counts.end())
        counts.emplace_back(what, 1);
    else
        ++found->second;
}

ExitCode Outcomes::finish()
{
    put([&] {
        if (isJson() && !isQuiet)
            list().close();
        context.output.flush();
    });
    if (writeFailure != nullptr)
        std::rethrow_exception(writeFailure);
    return worst;
}

// The work goes on whether its list can be written or not.
void Outcomes::put(const std::function<void()>& writeOut)
{
    if (readerGone || writeFailure != nullptr)
        return;
    try {
        writeOut();
    } catch (const ReaderGone&) {
        readerGone = true;
    } catch (const Failure&) {
        writeFailure = std::current_exception();
    }
}

// Started with the first element, so that a command that fails before it prints no list.
JsonList& Outcomes::list()
{
    if (json == nullptr)
        json = std::make_unique<JsonList>(context.output);
    return *json;
}

} // namespace Quorvex::Velmora::Tool
