/// @file
/// Connects the program with the scripted service, which runs in the same process; see
/// managed/ScriptedTessaport/Control/Channel.cs. Internal.
#pragma once

#include <nlohmann/json.hpp>

#include <velmora/api/RuntimeOptions.h>

namespace Quorvex::Velmora::TestKit
{

/// Starts .NET with the scripted service and attaches this program to it, unless it is attached.
///
/// @throws as the constructor of ScriptedService does.
void attachToService(const TessaportAPI::RuntimeOptions& options);

/// Gives the scripted service an order, of those in managed/ScriptedTessaport/Control/Orders.cs, and returns its
/// answer.
///
/// @throws std::logic_error with the message of the service if it cannot execute the order.
nlohmann::json order(const nlohmann::json& order);

} // namespace Quorvex::Velmora::TestKit
