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
    addPath(command, options.path, "The file that was closed")->required();
    command.add_option("--process", options.process, "Number of the process")
        ->type_name("N")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->required();
}

} // namespace Quorvex::Velmora::Tool
