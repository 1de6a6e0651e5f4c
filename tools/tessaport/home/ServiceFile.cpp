#include "tools/tessaport/home/ServiceFile.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/tessaport/home/HeldLock.h"
#include "tools/tessaport/home/HomeText.h"
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

bool isThere(const fs::path& file) { return isHomeFile(file, "run 'tessaport service start'"); }

} // namespace

ServiceFile::ServiceFile(Home serviceHome) : place(std::move(serviceHome)) {}

const ServiceStateName* ServiceFile::state() const
{
    if (!isThere(path()))
        return findState("not-installed");
    const Json content = parsed();
    if (!content.is_object() || !content.contains("state") || !content["state"].is_string())
        return nullptr;
    const ServiceStateName* const found = findState(content["state"].get<std::string>());
    return found != nullptr && found->code != ExitCode::NotInstalled ? found : nullptr;
}

void ServiceFile::setState(const std::string& name) const
{
    requireHome();
    const HeldLock held(place.serviceLockFile());
    const bool hasFile = isThere(path());
    if (name == "not-installed") {
        std::error_code error;
        fs::remove(path(), error);
        if (error)
            throw Failure(ExitCode::Failure, "cannot remove '" + toText(path()) + "': " + Platform::messageOf(error));
        return;
    }
    Json content = hasFile ? parsed() : Json::object();
    if (!content.is_object())
        content = Json::object();
    content["state"] = name;
    write(content);
}

Json ServiceFile::content() const
{
    requireHome();
    if (!isThere(path()))
        throw Failure(ExitCode::NotInstalled, "the service is not installed: there is no '" + toText(path()) +
                                                  "'; make it with 'tessaport service start'");
    Json content = parsed();
    if (!content.is_object())
        throw Failure(
            ExitCode::Failure, "'" + toText(path()) + "' is damaged; write it again with 'tessaport service start'");
    return content;
}

void ServiceFile::change(const std::function<void(Json&)>& edit) const
{
    requireHome();
    const HeldLock held(place.serviceLockFile());
    Json changed = content();
    edit(changed);
    write(changed);
}

void ServiceFile::requireHome() const
{
    std::error_code error;
    if (!fs::exists(place.drivesFile(), error) && !fs::exists(path(), error))
        throw Failure(ExitCode::NotInstalled,
            "there is no home in '" + toText(place.folder()) +
                "'; make one with 'tessaport drive add' or 'tessaport demo', or name another with --home");
}

void ServiceFile::write(const Json& changed) const { place.replaceFile(path(), toLine(changed) + '\n'); }

Json ServiceFile::parsed() const { return tryParseJson(readHomeFile(path())); }

} // namespace Quorvex::Velmora::Tool
