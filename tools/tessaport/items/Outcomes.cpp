#include "tools/tessaport/items/Outcomes.h"

#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

Outcomes::Outcomes(Context& commandContext)
    : context(commandContext),
      json(commandContext.options.json ? std::make_unique<JsonList>(commandContext.output) : nullptr)
{
}

void Outcomes::done(const std::string& path, const std::string& what)
{
    if (json != nullptr)
        json->add({{"path", path}, {"outcome", what}});
    else
        context.output.line(what + "  " + printable(path));
}

void Outcomes::failed(const std::string& path, const std::string& reason, ExitCode code)
{
    combine(worst, code);
    if (json != nullptr)
        json->add({{"path", path}, {"outcome", "failed"}, {"reason", reason}});
    context.output.message("'" + printable(path) + "': " + reason);
}

void Outcomes::notFound(const Lookup& lookup) { failed(lookup.given, whyNotFound(lookup), ExitCode::NotFound); }

void Outcomes::failedAsAWhole(const std::string& reason)
{
    combine(worst, ExitCode::Failure);
    if (json != nullptr)
        json->add({{"outcome", "failed"}, {"reason", reason}});
    context.output.message(reason);
}

ExitCode Outcomes::finish()
{
    if (json != nullptr)
        json->close();
    return worst;
}

} // namespace Quorvex::Velmora::Tool
