/// @file
/// A fixture for starts of a runtime of its own with a fake bridge.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include "tests/bridge/runtime/FakeBridge.h"
#include "tests/bridge/runtime/Installation.h"

namespace Quorvex::Velmora::TestSupport
{

/// The codes of failures that hostfxr documents.
constexpr std::uint32_t FirstCode = 0x80008081;
constexpr std::uint32_t LastCode = 0x800080a7;

inline std::string hexadecimal(std::uint32_t code)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", code);
    return text;
}

class RuntimeStart : public testing::Test
{
protected:
    /// @param host  what starts the fake bridge; it is not used before a test asks for the runtime.
    explicit RuntimeStart(std::unique_ptr<Tessaport::HostFxr> host) : runtime(std::move(host), bridge)
    {
        bridgeScript = successfulBridge();
        for (const char* const name : BridgeFiles)
            writeText(bridge / name, "");
    }

    std::string failureOfStart()
    {
        try {
            (void)runtime.entryPoints();
        } catch (const TessaportAPI::ApiException& e) {
            return e.what();
        }
        ADD_FAILURE() << "the start succeeded";
        return {};
    }

    void expectSuccess() { EXPECT_EQ(runtime.entryPoints().version, Tessaport::EntryPointsVersion); }

    TemporaryFolder folder;
    const std::filesystem::path bridge = folder.path() / "bridge";
    Tessaport::ClrRuntime runtime;
};

} // namespace Quorvex::Velmora::TestSupport
