#include "velmora/api/Command.h"

#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/api/ManagedObjects.h"

using namespace Quorvex::Velmora;
using TessaportAPI::Command;
using TestSupport::ManagedObjects;
using Bridge = Tessaport::QvManagedTessaportService;
using Released = std::vector<Tessaport::VelmoraHandle>;
using Bytes = std::vector<std::uint8_t>;

namespace
{

class Commands : public testing::Test
{
protected:
    [[nodiscard]] Command filled(Tessaport::VelmoraHandle handle, std::uint64_t imageSize) const
    {
        Command command;
        command.name = L"Lock";
        command.id = L"lock";
        command.isEnabled = true;
        command.isBeginningOfGroup = true;
        command.image.data = imageSize == 0 ? nullptr : new std::uint8_t[imageSize];
        command.image.count = imageSize;
        for (std::uint64_t i = 0; i < imageSize; ++i)
            command.image.data[i] = static_cast<std::uint8_t>(handle + static_cast<std::int64_t>(i));
        if (handle != 0)
            Bridge::setInternalCommand(command, objects.command(handle));
        return command;
    }

    static Tessaport::VelmoraHandle handleOf(const Command& command)
    {
        const auto wrapper = Bridge::getInternalCommand(command);
        return wrapper == nullptr ? 0 : wrapper->command.get();
    }

    static Bytes bytesOf(const Command& command)
    {
        return Bytes(command.image.data, command.image.data + command.image.count);
    }

    ManagedObjects objects;
};

} // namespace

TEST_F(Commands, HaveNoStringsImageOrManagedObjectByDefault)
{
    const Command command;

    EXPECT_TRUE(command.name.Empty());
    EXPECT_TRUE(command.id.Empty());
    EXPECT_EQ(command.image.data, nullptr);
    EXPECT_EQ(command.image.count, 0U);
    EXPECT_EQ(Bridge::getInternalCommand(command), nullptr);
}

TEST_F(Commands, CopyStringsFlagsAndImageAndShareTheManagedObject)
{
    {
        const Command source = filled(7, 10);
        const Command copy(source);

        EXPECT_STREQ(copy.name.w_str(), L"Lock");
        EXPECT_STREQ(copy.id.w_str(), L"lock");
        EXPECT_TRUE(copy.isEnabled);
        EXPECT_FALSE(copy.isChecked);
        EXPECT_TRUE(copy.isBeginningOfGroup);
        EXPECT_FALSE(copy.isDefaultCommand);
        EXPECT_NE(copy.image.data, source.image.data);
        EXPECT_EQ(bytesOf(copy), bytesOf(source));
        EXPECT_EQ(Bridge::getInternalCommand(copy), Bridge::getInternalCommand(source));
    }
    EXPECT_EQ(ManagedObjects::released, Released{7});
}

TEST_F(Commands, CopyAnEmptyImageAsNoImage)
{
    const Command source = filled(7, 0);
    const Command copy(source);
    Command assigned = filled(8, 10);
    assigned = source;

    EXPECT_EQ(copy.image.data, nullptr);
    EXPECT_EQ(copy.image.count, 0U);
    EXPECT_EQ(assigned.image.data, nullptr);
    EXPECT_EQ(assigned.image.count, 0U);
}

TEST_F(Commands, ReuseTheImageBufferWhenTheSizesAreEqual)
{
    const Command source = filled(7, 10);
    Command target = filled(8, 10);
    const std::uint8_t* const place = target.image.data;

    target = source;

    EXPECT_EQ(target.image.data, place);
    EXPECT_EQ(bytesOf(target), bytesOf(source));
}

TEST_F(Commands, ReplaceTheImageBufferWhenTheSizesDiffer)
{
    const Command source = filled(7, 10);
    Command target = filled(8, 3);

    target = source;

    EXPECT_EQ(bytesOf(target), bytesOf(source));
    EXPECT_NE(target.image.data, source.image.data);
    EXPECT_EQ(handleOf(target), 7);
    EXPECT_EQ(ManagedObjects::released, Released{8});
}

TEST_F(Commands, KeepTheManagedObjectWhenACommandWithoutOneIsAssigned)
{
    Command target = filled(7, 10);
    Command emptied;
    Bridge::setInternalCommand(emptied, nullptr);

    target = Command();
    target = emptied;
    target = std::move(emptied);

    EXPECT_EQ(handleOf(target), 7);
    EXPECT_TRUE(target.name.Empty());
    EXPECT_EQ(target.image.data, nullptr);
}

TEST_F(Commands, AreUnchangedWhenAnAssignmentFails)
{
    constexpr std::uint64_t MoreThanThereIs = std::uint64_t{1} << 63;
    Command source = filled(7, 1);
    source.isChecked = true;
    source.image.count = MoreThanThereIs;
    Command target;
    target.name = L"Unlock";
    target.id = L"unlock";

    EXPECT_THROW(target = source, std::bad_alloc);
    EXPECT_THROW(Command{source}, std::bad_alloc);

    EXPECT_STREQ(target.name.w_str(), L"Unlock");
    EXPECT_STREQ(target.id.w_str(), L"unlock");
    EXPECT_FALSE(target.isEnabled);
    EXPECT_FALSE(target.isChecked);
    EXPECT_FALSE(target.isBeginningOfGroup);
    EXPECT_EQ(target.image.data, nullptr);
    EXPECT_EQ(target.image.count, 0U);
    EXPECT_EQ(handleOf(target), 0);
}

TEST_F(Commands, AreUnchangedBySelfAssignment)
{
    Command command = filled(7, 10);
    Command& same = command;
    const Bytes bytes = bytesOf(command);

    command = same;
    command = std::move(same);

    EXPECT_EQ(bytesOf(command), bytes);
    EXPECT_EQ(handleOf(command), 7);
    EXPECT_STREQ(command.name.w_str(), L"Lock");
}

TEST_F(Commands, PassEverythingOnInAMove)
{
    Command source = filled(7, 10);
    const std::uint8_t* const place = source.image.data;

    Command moved(std::move(source));
    Command assigned = filled(8, 3);
    assigned = std::move(moved);

    EXPECT_EQ(assigned.image.data, place);
    EXPECT_EQ(handleOf(assigned), 7);
    EXPECT_EQ(source.image.data, nullptr);
    EXPECT_EQ(moved.image.count, 0U);
    EXPECT_EQ(ManagedObjects::released, Released{8});
}
