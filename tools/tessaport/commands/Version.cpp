#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

ExitCode showVersions(Context& context)
{
    const std::string version = toUtf8(context.connection().getVersion());
    if (context.options.json)
        context.output.line(toLine({{"tool", VELMORA_TOOL_VERSION}, {"tessaport", version}}));
    else
        context.output.line("Tessaport " + version + " (tool " VELMORA_TOOL_VERSION ")");
    return ExitCode::Ok;
}

} // namespace

void addVersionCommand(const CommandLine& line)
{
    addCommand(line, "version", "Show the version of the sync application", "tessaport version", showVersions);
}

} // namespace Quorvex::Velmora::Tool
