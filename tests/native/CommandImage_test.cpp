#include "velmora/native/CommandImage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

using Bytes = std::vector<std::uint8_t>;

constexpr const char* FourBytes = "AQIDBA==";

class CommandImage : public BridgeTest
{
protected:
    Command commandWith(const Json& scripted)
    {
        service.answer("GetCommands", Json::array({scripted}));
        return *bridge.getCommands(contextOf(1, {}))[0];
    }
};

TEST_F(CommandImage, HasTheBytesOfTheSyncApplication)
{
    const Command command = commandWith(TestSupport::command(1, "AAEC/f7/"));

    EXPECT_EQ(commandImage(command), Bytes({0x00, 0x01, 0x02, 0xFD, 0xFE, 0xFF}));
    EXPECT_EQ(command.image.count, 6U);
    EXPECT_TRUE(std::all_of(command.image.data, command.image.data + 6, [](std::uint8_t byte) { return byte == 0; }));
}

TEST_F(CommandImage, IsEmptyForANullImage) { EXPECT_TRUE(commandImage(commandWith(command(1, nullptr))).empty()); }

TEST_F(CommandImage, IsEmptyForAnEmptyImage) { EXPECT_TRUE(commandImage(commandWith(command(1, ""))).empty()); }

TEST_F(CommandImage, IsEmptyForADefaultConstructedCommand)
{
    Command command;
    command.image = {new std::uint8_t[3]{1, 2, 3}, 3};

    EXPECT_TRUE(commandImage(command).empty());
    EXPECT_TRUE(commandImage(Command(command)).empty());
}

TEST_F(CommandImage, IgnoresWhatTheFieldHolds)
{
    Command command = commandWith(TestSupport::command(1, FourBytes));
    command.image.data[0] = 77;
    Command other = command;
    delete[] other.image.data;
    other.image = {};

    EXPECT_EQ(commandImage(command), Bytes({1, 2, 3, 4}));
    EXPECT_EQ(commandImage(other), Bytes({1, 2, 3, 4}));
}

TEST_F(CommandImage, OfAMovedFromCommandIsEmpty)
{
    Command command = commandWith(TestSupport::command(1, FourBytes));
    const Command target = std::move(command);

    EXPECT_EQ(commandImage(target), Bytes({1, 2, 3, 4}));
    EXPECT_TRUE(commandImage(command).empty()); // NOLINT(bugprone-use-after-move)
}

TEST_F(CommandImage, OfAHundredMegabytesIsComplete)
{
    constexpr std::size_t Size = 100'000'000;
    const Command command = commandWith(TestSupport::command(1, Size));

    const Bytes image = commandImage(command);

    ASSERT_EQ(image.size(), Size);
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < Size; ++i)
        wrong += image[i] == i % 251 ? 0U : 1U;
    EXPECT_EQ(wrong, 0U);
}

TEST_F(CommandImage, IsReadAgainByEveryCall)
{
    const Command command =
        commandWith(commandWithFailingImage(1, 3, failure("TessaportNotRunningException", L"it is off")));

    EXPECT_EQ(commandImage(command).size(), 4U);
    EXPECT_EQ(commandImage(command).size(), 4U);
    EXPECT_THROW((void)commandImage(command), TessaportNotRunningException);
}

TEST_F(CommandImage, FailsAsTheGetterDoes)
{
    const Command notRunning =
        commandWith(commandWithFailingImage(1, 1, failure("TessaportNotRunningException", L"it is \x4E2D off")));
    const Command other = commandWith(commandWithFailingImage(2, 1, failure("InvalidOperationException", L"no icon")));

    try {
        (void)commandImage(notRunning);
        FAIL() << "nothing was thrown";
    } catch (const TessaportNotRunningException& e) {
        EXPECT_STREQ(e.what(), "it is \xE4\xB8\xAD off");
    }
    try {
        (void)commandImage(other);
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_STREQ(e.what(), "no icon");
    }
    EXPECT_EQ(bridge.getVersion(), bridge.getVersion());
}

TEST_F(CommandImage, WorksAfterTheConnectionIsGone)
{
    const CommandContext context = contextOf(1, {});
    service.answer("GetCommands", Json::array({TestSupport::command(1, FourBytes)}));
    auto connection = std::make_unique<QvNativeTessaportAPI>();
    const Command command = *connection->getCommands(context)[0];
    connection.reset();
    service.answer("GetCommands", Json::array());
    (void)service.collect();

    EXPECT_EQ(commandImage(command), Bytes({1, 2, 3, 4}));
}

TEST_F(CommandImage, MakesNoCallOfTheService)
{
    const Command command = commandWith(TestSupport::command(1, FourBytes));
    (void)service.takeCalls();

    (void)commandImage(command);

    EXPECT_TRUE(service.takeCalls().empty());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
