#include "tests/support/ScriptedChannel.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace
{

using Receive = void (*)(void* context, const char* data, std::int64_t length);
using Execute = void (*)(const char* order, std::int64_t length, void* context, Receive receive);

Execute executeOrder = nullptr;

} // namespace

#ifdef _WIN32
#define VELMORA_TEST_EXPORT __declspec(dllexport)
#else
#define VELMORA_TEST_EXPORT __attribute__((visibility("default")))
#endif

extern "C" VELMORA_TEST_EXPORT void scriptedTessaportAttach(Execute execute) { executeOrder = execute; }

namespace Quorvex::Velmora::TestSupport
{

bool isScriptedServiceAttached() noexcept { return executeOrder != nullptr; }

nlohmann::json order(const nlohmann::json& order)
{
    if (executeOrder == nullptr)
        throw std::logic_error("The scripted service has not attached itself to this program.");
    const std::string text = order.dump();
    std::string answer;
    executeOrder(text.data(), static_cast<std::int64_t>(text.size()), &answer,
        [](void* context, const char* data, std::int64_t length) {
            static_cast<std::string*>(context)->assign(data, static_cast<std::size_t>(length));
        });
    nlohmann::json parsed = nlohmann::json::parse(answer);
    if (parsed.contains("error"))
        throw std::logic_error("The script is wrong: " + parsed["error"].get<std::string>());
    return parsed["answer"];
}

} // namespace Quorvex::Velmora::TestSupport
