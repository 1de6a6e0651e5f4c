// The fixture of tests of the bridge itself, with ids, items and commands that came from the scripted service.
#pragma once

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/support/Buffers.h"
#include "tests/support/ScriptedTest.h"

namespace Quorvex::Velmora::TestSupport
{

class BridgeTest : public ScriptedTest
{
protected:
    /// The id of the managed object of that number; the service does not keep it alive.
    [[nodiscard]] TessaportAPI::ItemId idOf(const Json& number);
    [[nodiscard]] TessaportAPI::Item itemOf(int number);
    [[nodiscard]] TessaportAPI::Command commandOf(int number);

    /// A context of those items for window 0x1234.
    [[nodiscard]] TessaportAPI::CommandContext contextOf(int item, std::initializer_list<int> furtherItems);

    Tessaport::QvManagedTessaportService bridge;

private:
    // Back to the default answer, and no trace among the calls.
    void forget(const char* member);
};

} // namespace Quorvex::Velmora::TestSupport
