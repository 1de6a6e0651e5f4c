#include "tools/tessaport/home/Home.h"

#include <system_error>
#include <utility>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{

Home::Home(fs::path homeFolder) : root(std::move(homeFolder)) {}

Home Home::locate()
{
    if (const auto chosen = Platform::environment("TESSAPORT_HOME"))
        return Home(toPath(absolutePath(*chosen)));
    const fs::path data = Platform::userDataFolder();
    if (data.empty())
        throw Failure(ExitCode::Failure,
            "there is no per-user data folder to keep a home in; name a folder with --home or TESSAPORT_HOME");
    return Home(data / "Tessaport");
}

void Home::replaceFile(const fs::path& file, const std::string& content, std::optional<std::int64_t> modified) const
{
    // In the root of the home, which no drive includes.
    fs::path prepared = root / ".";
    prepared += file.filename();
    prepared += ".new";
    try {
        // What a process left that was killed, or a link that someone else put there.
        fs::remove(prepared);
        Platform::writeNewFile(prepared, content);
        if (modified)
            Platform::setModifiedTime(prepared, *modified);
        Platform::replaceFile(prepared, file);
    } catch (const fs::filesystem_error& e) {
        std::error_code ignored;
        fs::remove(prepared, ignored);
        throw Failure(ExitCode::Failure, "cannot write '" + toText(file) + "': " + Platform::messageOf(e.code()));
    }
}

} // namespace Quorvex::Velmora::Tool
