#include "velmora/testkit/Channel.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "velmora/testkit/ServiceFolder.h"

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace Quorvex::Velmora::TestKit
{
namespace
{

using Receive = void (*)(void* context, const char* data, std::int64_t length);
using Execute = void (*)(const char* order, std::int64_t length, void* context, Receive receive);

// The scripted service sets it, and stays until the process ends.
std::atomic<Execute> executeOrder = nullptr;

void attach(Execute execute) { executeOrder = execute; }

int processId()
{
#ifdef _WIN32
    return _getpid();
#else
    return getpid();
#endif
}

// A request brings the address to the service, so that programs need not export a function that it could look for.
std::wstring greeting()
{
    std::wostringstream text;
    text.imbue(std::locale::classic());
    text << L"velmora-testkit attach " << std::hex << reinterpret_cast<std::uintptr_t>(&attach);
    return text.str();
}

TessaportAPI::RuntimeOptions withServiceFolder(TessaportAPI::RuntimeOptions options)
{
    if (options.apiFolder.empty())
        options.apiFolder = installedServiceFolder();
    return options;
}

void setOptions(const TessaportAPI::RuntimeOptions& options)
{
    try {
        TessaportAPI::setRuntimeOptions(options);
    } catch (const std::logic_error&) {
        throw std::logic_error("The scripted service cannot be used: a connection of this process has already started "
                               ".NET without it. Make the first ScriptedService before anything "
                               "opens a connection.");
    }
}

} // namespace

void attachToService(const TessaportAPI::RuntimeOptions& options)
{
    if (executeOrder != nullptr)
        return;
    const TessaportAPI::RuntimeOptions used = withServiceFolder(options);
    setOptions(used);
    TessaportAPI::QvNativeTessaportAPI connection;
    try {
        connection.fileClosedWithinRunningProcess(processId(), greeting().c_str());
    } catch (const TessaportAPI::ApiException&) {
        // Another sync application refuses the greeting.
    }
    if (executeOrder == nullptr) {
        throw std::logic_error("The sync application in '" + used.apiFolder.u8string() +
                               "' is not the scripted service. Set RuntimeOptions::apiFolder to the folder "
                               "share/velmora/test-kit of the installed test kit, or leave it empty.");
    }
}

nlohmann::json order(const nlohmann::json& order)
{
    const Execute execute = executeOrder;
    if (execute == nullptr)
        throw std::logic_error("The scripted service is not attached to this program.");
    const std::string text = order.dump();
    std::string answer;
    execute(text.data(), static_cast<std::int64_t>(text.size()), &answer,
        [](void* context, const char* data, std::int64_t length) {
            static_cast<std::string*>(context)->assign(data, static_cast<std::size_t>(length));
        });
    nlohmann::json parsed = nlohmann::json::parse(answer);
    if (parsed.contains("error"))
        throw std::logic_error("The script is wrong: " + parsed["error"].get<std::string>());
    return parsed["answer"];
}

} // namespace Quorvex::Velmora::TestKit
