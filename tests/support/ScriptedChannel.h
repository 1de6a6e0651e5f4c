// Connects a test to the scripted service, which runs in the same process; see
// tests/managed/ScriptedTessaport/Control/Channel.cs.
#pragma once

#include <nlohmann/json.hpp>

namespace Quorvex::Velmora::TestSupport
{

/// True once the scripted service has been used in this process.
[[nodiscard]] bool isScriptedServiceAttached() noexcept;

/// @throws std::logic_error with the message of the service if it cannot execute the order.
nlohmann::json order(const nlohmann::json& order);

} // namespace Quorvex::Velmora::TestSupport
