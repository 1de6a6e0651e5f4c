#include "tools/tessaport/home/Home.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

const ServiceStateName* findState(std::string_view name)
{
    const auto* const found = std::find_if(ServiceStates.begin(), ServiceStates.end(),
        [name](const ServiceStateName& candidate) { return name == candidate.name; });
    return found == ServiceStates.end() ? nullptr : found;
}

void writeWhole(const fs::path& file, const std::string& content)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    if (!stream)
        throw fs::filesystem_error("cannot write", file, std::make_error_code(std::errc::io_error));
    Platform::flushToDisk(file);
}

std::string withoutByteOrderMark(std::string text)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.compare(0, mark.size(), mark) == 0 ? text.substr(mark.size()) : text;
}

} // namespace

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

const ServiceStateName* Home::state() const
{
    std::error_code error;
    if (!fs::exists(serviceFile(), error))
        return findState("not-installed");
    const auto text = readFile(serviceFile());
    if (!text)
        throw Failure(ExitCode::Failure, "'" + toText(serviceFile()) + "' cannot be read");
    const Json content = Json::parse(withoutByteOrderMark(*text), nullptr, false);
    if (!content.is_object() || !content.contains("state") || !content["state"].is_string())
        return nullptr;
    const ServiceStateName* const found = findState(content["state"].get<std::string>());
    return found != nullptr && found->code != ExitCode::NotInstalled ? found : nullptr;
}

void Home::setState(const std::string& name) const
{
    std::error_code error;
    if (!fs::exists(drivesFile(), error) && !fs::exists(serviceFile(), error))
        throw Failure(ExitCode::NotInstalled,
            "there is no home in '" + toText(root) + "'; make one with 'tessaport demo', or name another with --home");
    if (name == "not-installed") {
        fs::remove(serviceFile(), error);
        if (error)
            throw Failure(
                ExitCode::Failure, "cannot remove '" + toText(serviceFile()) + "': " + Platform::messageOf(error));
        return;
    }
    replaceFile(serviceFile(), toLine({{"state", name}}) + '\n');
}

void Home::replaceFile(const fs::path& file, const std::string& content, std::optional<std::int64_t> modified) const
{
    // In the root of the home, which no drive includes.
    const fs::path prepared = root / ('.' + std::to_string(Platform::processId()) + ".new");
    try {
        writeWhole(prepared, content);
        if (modified)
            Platform::setModifiedTime(prepared, *modified);
        fs::rename(prepared, file);
    } catch (const fs::filesystem_error& e) {
        std::error_code ignored;
        fs::remove(prepared, ignored);
        throw Failure(ExitCode::Failure, "cannot write '" + toText(file) + "': " + Platform::messageOf(e.code()));
    }
}

std::optional<std::string> readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    return stream.bad() ? std::nullopt : std::optional(std::move(content));
}

} // namespace Quorvex::Velmora::Tool
