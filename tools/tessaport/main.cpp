#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commandline/CommandLine.h"
#include "tools/tessaport/platform/Platform.h"

namespace
{

using namespace Quorvex::Velmora::Tool;

ExitCode run(int argc, char** argv)
{
    Context context;
    try {
        const ExitCode code = runCommandLine(Platform::arguments(argc, argv), context);
        context.output.flush();
        return code;
    } catch (const ReaderGone&) {
        return ExitCode::Ok;
    } catch (...) {
        const Explanation explanation = explainCurrentException();
        try {
            context.output.message(explanation.text);
        } catch (...) {
            // The message could not be put behind the data any more.
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
