#include "tests/support/BridgeTest.h"

#include <cstdint>

namespace Quorvex::Velmora::TestSupport
{

TessaportAPI::ItemId BridgeTest::idOf(const Json& number)
{
    service.answer("GetPermanentIds", Json::array({permanentIdResult(number, nullptr, 1)}));
    const auto results = bridge.getPermanentIds({});
    forget("GetPermanentIds");
    return results[0]->itemId;
}

TessaportAPI::Item BridgeTest::itemOf(int number)
{
    service.answer("GetItemsByRelativePaths", Json::array({item(number)}));
    const auto items = bridge.getItemsByRelativePaths({}, {});
    forget("GetItemsByRelativePaths");
    return *items[0];
}

TessaportAPI::Command BridgeTest::commandOf(int number)
{
    TessaportAPI::CommandContext context;
    context.itemId = idOf(nullptr);
    service.answer("GetCommands", Json::array({command(number)}));
    const auto commands = bridge.getCommands(context);
    forget("GetCommands");
    return *commands[0];
}

TessaportAPI::CommandContext BridgeTest::contextOf(int item, std::initializer_list<int> furtherItems)
{
    TessaportAPI::CommandContext context;
    context.itemId = idOf(item);
    for (const int further : furtherItems)
        context.itemIds.Append(idOf(further));
    context.windowHandle = reinterpret_cast<HWND>(std::intptr_t{0x1234});
    return context;
}

void BridgeTest::forget(const char* member)
{
    service.answerInTurn(member, {});
    (void)service.takeCalls();
}

} // namespace Quorvex::Velmora::TestSupport
