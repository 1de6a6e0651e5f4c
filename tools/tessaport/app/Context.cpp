#include "tools/tessaport/app/Context.h"

#include <velmora/api/QVLog.h>
#include <velmora/native/RuntimeOptions.h>
#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/home/Home.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

Context::~Context() { Common::QVLog::setSink({}); }

void Context::prepare()
{
    output.decideOnColour(options.noColor ? "never" : options.color);
    if (!options.home.empty())
        Platform::setEnvironment("TESSAPORT_HOME", absolutePath(options.home));
    // The service gets the folder that the tool has found, without links, so that it reports the same paths as those
    // that look-ups arrive at.
    if (Platform::environment("TESSAPORT_HOME") || !Platform::userDataFolder().empty())
        Platform::setEnvironment("TESSAPORT_HOME", withoutLinks(toText(Home::locate().folder())));
    TessaportAPI::RuntimeOptions runtime;
    runtime.apiFolder = apiFolder();
    runtime.dotnetRoot = toPath(options.dotnetRoot);
    TessaportAPI::setRuntimeOptions(runtime);
    Common::QVLog::setSink([this](const Common::QVString& line, bool) { takeLogLine(toUtf8(line)); });
}

TessaportAPI::QvNativeTessaportAPI& Context::connection()
{
    if (opened == nullptr)
        opened = std::make_unique<TessaportAPI::QvNativeTessaportAPI>();
    return *opened;
}

std::filesystem::path Context::apiFolder() const
{
    if (!options.apiFolder.empty())
        return toPath(absolutePath(options.apiFolder));
    return (Platform::executableFile().parent_path() / ".." / "share" / "velmora" / "local-service").lexically_normal();
}

std::string Context::commandFor(const Home& home) const
{
    return options.home.empty() ? "tessaport" : "tessaport --home " + Platform::quoted(toText(home.folder()));
}

ExitCode Context::reportStaticFailure(const std::string& what)
{
    try {
        connection().discover();
    } catch (...) {
        const Explanation explanation = explainCurrentException();
        output.message(what + ": " + explanation.text);
        return explanation.code;
    }
    output.message(loggedError.empty() ? what : what + ": " + loggedError);
    return ExitCode::Failure;
}

void Context::takeLogLine(const std::string& line)
{
    constexpr std::string_view errorPrefix = "[TP] ERROR: ";
    if (line.compare(0, errorPrefix.size(), errorPrefix) == 0)
        loggedError = line.substr(errorPrefix.size());
    if (options.verbose)
        output.note(line);
}

} // namespace Quorvex::Velmora::Tool
