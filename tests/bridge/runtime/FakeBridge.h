/// @file
/// A fake of the managed half of the bridge: the function that a host returns to start it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include "tests/support/ReplyBuilder.h"

namespace Quorvex::Velmora::TestSupport
{

/// The files that a start looks for in the folder of the bridge.
#ifdef _WIN32
constexpr const char* BridgeFiles[] = {"Velmora.Bridge.dll", "Velmora.Bridge.runtimeconfig.json", "nethost.dll"};
#else
constexpr const char* BridgeFiles[] = {"Velmora.Bridge.dll", "Velmora.Bridge.runtimeconfig.json"};
#endif

/// What the fake does when it is started, and what it was given.
struct BridgeScript {
    std::int32_t row = 0;
    PackedReply reply;
    int started = 0;
    int repliesReleased = 0;
    std::u16string apiFolder;
    std::uint32_t version = 0;
    std::uint32_t size = 0;
};
inline BridgeScript bridgeScript;

inline PackedReply replyOf(const std::vector<std::u16string>& strings)
{
    ReplyBuilder builder;
    for (const std::u16string& each : strings)
        builder.string(each);
    return builder.build(static_cast<std::uint32_t>(strings.size()));
}

/// A script that starts and describes a runtime.
inline BridgeScript successfulBridge()
{
    BridgeScript script;
    script.reply = replyOf({u".NET 8.0.1", u"0.1.0.0", u"/api/Quorvex.Tessaport.API.dll", u"3.0.0.0"});
    return script;
}

inline std::int32_t startFakeBridge(
    Tessaport::TessaportEntryPoints* table, const Tessaport::VelmoraString* apiFolder, Tessaport::VelmoraReply* reply)
{
    ++bridgeScript.started;
    bridgeScript.apiFolder.assign(apiFolder->data, apiFolder->length);
    bridgeScript.version = table->version;
    bridgeScript.size = table->size;
    table->releaseReply = [](Tessaport::VelmoraReply*) { ++bridgeScript.repliesReleased; };
    reply->data = bridgeScript.reply.bytes.data();
    reply->size = bridgeScript.reply.bytes.size();
    return bridgeScript.row;
}

} // namespace Quorvex::Velmora::TestSupport
