#include <limits>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

struct ClosedOptions {
    std::string path;
    int process = 0;
};

ExitCode reportClosed(Context& context, const ClosedOptions& options)
{
    context.connection().fileClosedWithinRunningProcess(
        options.process, toQVString(ItemPaths(context).of(options.path)));
    Outcomes outcomes(context);
    outcomes.done(options.path, "reported");
    return outcomes.finish();
}

} // namespace

void addClosedCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<ClosedOptions>(line, "closed", "Tell the sync application that a process has closed a file",
            "tessaport closed --process 4711 PATH", reportClosed);
    command.addPath(options.path, "The file that was closed").required();
    command.addOption("--process", options.process, "Number of the process")
        .valueName("N")
        .from1To(std::numeric_limits<int>::max())
        .required();
}

} // namespace Quorvex::Velmora::Tool
