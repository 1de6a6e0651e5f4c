#include "velmora/testkit/ScriptedService.h"

#include <exception>

#include "velmora/testkit/Channel.h"
#include "velmora/testkit/Encoding.h"

namespace Quorvex::Velmora::TestKit
{

ScriptedService::ScriptedService(const TessaportAPI::RuntimeOptions& options)
{
    attachToService(options);
    reset();
}

ScriptedService::~ScriptedService()
{
    try {
        reset();
    } catch (const std::exception&) {
        // Only memory can be out; the next object resets the script as well.
    }
}

std::vector<Call> ScriptedService::takeCalls() { return decodedCalls(order({{"order", "calls"}})); }

void ScriptedService::reset() { order({{"order", "reset"}}); }

} // namespace Quorvex::Velmora::TestKit
