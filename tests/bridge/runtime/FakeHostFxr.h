/// @file
/// A fake of .NET's native host, whose steps return what the test has set.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <velmora/bridge/runtime/HostFxr.h>

namespace Quorvex::Velmora::TestSupport
{

/// What the steps of the fake return, and what they were given. Outlives the runtime that owns the fake.
struct HostScript {
    Tessaport::HostingStatus open;
    Tessaport::HostingStatus start;
    Tessaport::StartBridge startBridge = nullptr;
    /// Runs inside the second step.
    std::function<void()> whileStarting = [] {};

    int opened = 0;
    int started = 0;
    std::filesystem::path dotnetRoot;
    std::filesystem::path bridgeFolder;
};

class FakeHostFxr final : public Tessaport::HostFxr
{
public:
    explicit FakeHostFxr(HostScript& script) : script(script) {}

    Tessaport::HostingStatus open(const std::filesystem::path& dotnetRoot) override
    {
        ++script.opened;
        script.dotnetRoot = dotnetRoot;
        return script.open;
    }

    Tessaport::HostingStatus start(
        const std::filesystem::path& bridgeFolder, Tessaport::StartBridge& startBridge) override
    {
        ++script.started;
        script.bridgeFolder = bridgeFolder;
        script.whileStarting();
        startBridge = script.startBridge;
        return script.start;
    }

private:
    HostScript& script;
};

} // namespace Quorvex::Velmora::TestSupport
