#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commandline/CommandLine.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/platform/Platform.h"

namespace
{

using namespace Quorvex::Velmora::Tool;

ExitCode run(int argc, char** argv)
{
    Context context;
    try {
        const ExitCode code = runCommandLine(Platform::arguments(argc, argv), context, addAllCommands);
        context.output.flush();
        return code == ExitCode::Ok && context.output.hasLostMessages() ? ExitCode::Failure : code;
    } catch (const ReaderGone&) {
        return ExitCode::Ok;
    } catch (...) {
        const Explanation explanation = explainCurrentException();
        try {
            context.output.message(explanation.text);
        } catch (...) {
            // The data before the message could not be written.
        }
        return explanation.code;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const Platform::PreparedStreams streams;
    return static_cast<int>(run(argc, argv));
}
