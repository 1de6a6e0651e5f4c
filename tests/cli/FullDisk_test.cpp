#include <optional>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"
#include "tests/support/MountedDisk.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

constexpr std::size_t MiB = 1024 * 1024;

/// The workspace of the first drive is on a small file system.
class FullDisk : public ToolTest
{
protected:
    void SetUp() override
    {
        makeDemo();
        expectOk({"sync"});
        small = folder / "small";
        fs::create_directory(small);
        disk.emplace(small, MiB);
        moveDrive("workspace", text(small / "workspace"));
    }

    void moveDrive(const std::string& side, const std::string& place)
    {
        auto drives = nlohmann::json::parse(readFile(home / "drives.json"));
        drives[0][side] = place;
        fs::remove_all(home / "state");
        writeFile(home / "drives.json", drives.dump());
    }

    fs::path small;
    std::optional<TestSupport::MountedDisk> disk;
};

std::string bigContent() { return std::string(3 * MiB, 'b'); }

TEST_F(FullDisk, SyncNamesTheFileThatDidNotFitAndSyncsTheOthers)
{
    writeFile(server("harbour") / "big.bin", bigContent());
    writeFile(server("harbour") / "zoo/small.txt", "small");

    const ChildResult finished = run({"sync", text(small / "workspace")});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr(text(small / "workspace/big.bin")));
    EXPECT_THAT(finished.errors, HasSubstr("not synced: "));
    EXPECT_THAT(finished.errors, HasSubstr("space")) << "in the words of the system";
    EXPECT_FALSE(fs::exists(small / "workspace/big.bin"));
    EXPECT_EQ(readFile(small / "workspace/zoo/small.txt"), "small");
    EXPECT_EQ(readFile(server("harbour") / "big.bin"), bigContent());
}

TEST_F(FullDisk, SyncKeepsTheOldVersionUntilThereIsRoomForTheNewOne)
{
    expectOk({"sync"});
    const std::string old = readFile(small / "workspace/README.txt");
    writeFile(server("harbour") / "README.txt", bigContent());

    EXPECT_EQ(run({"sync"}).exitCode, 1);

    EXPECT_EQ(readFile(small / "workspace/README.txt"), old);
    disk->setCapacity(64 * MiB);
    expectOk({"sync"});
    EXPECT_EQ(readFile(small / "workspace/README.txt"), bigContent());
}

TEST_F(FullDisk, AddLeavesNoIncompleteFile)
{
    expectOk({"sync"});
    writeFile(folder / "big.bin", bigContent());
    writeFile(folder / "little.txt", "little");

    const ChildResult finished =
        run({"add", text(folder / "big.bin"), text(folder / "little.txt"), text(small / "workspace/plans")});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("big.bin': it could not be copied: "));
    EXPECT_FALSE(fs::exists(small / "workspace/plans/big.bin"));
    EXPECT_FALSE(fs::exists(server("harbour") / "plans/big.bin"));
    EXPECT_EQ(readFile(small / "workspace/plans/little.txt"), "little");
    EXPECT_EQ(readFile(server("harbour") / "plans/little.txt"), "little");
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
