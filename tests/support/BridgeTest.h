// The fixture of tests of the bridge, with ids, items and commands from the scripted service.
#pragma once

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/support/Buffers.h"
#include "tests/support/ScriptedTest.h"

namespace Quorvex::Velmora::TestSupport
{

class BridgeTest : public ScriptedTest
{
protected:
    /// The id of the managed object with this number; the service does not keep the object alive.
    [[nodiscard]] TessaportAPI::ItemId idOf(const Json& number);
    [[nodiscard]] TessaportAPI::Item itemOf(int number);
    [[nodiscard]] TessaportAPI::Command commandOf(int number);

    /// A context with the items and the window 0x1234.
    [[nodiscard]] TessaportAPI::CommandContext contextOf(int item, std::initializer_list<int> furtherItems);

    Tessaport::QvManagedTessaportService bridge;

private:
    // Restores the default answer and leaves no trace in the recorded calls.
    void forget(const char* member);
};

} // namespace Quorvex::Velmora::TestSupport
