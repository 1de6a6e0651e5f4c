// The images of the local service's own commands.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/Interop.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/native/CommandImage.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

namespace fs = std::filesystem;
using namespace TessaportAPI;

void writeText(const fs::path& file, const char* text) { std::ofstream(file, std::ios::binary) << text; }

fs::path makeHome(const fs::path& home)
{
    fs::create_directories(home / "drive" / "workspace");
    fs::create_directories(home / "drive" / "server");
    writeText(home / "drive" / "workspace" / "a.txt", "a");
    writeText(home / "drives.json",
        R"([{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "Drive", "type": "Quorvex.DataSourceType.Drive",
             "workspace": "drive/workspace", "server": "drive/server", "locking": true}])");
    writeText(home / "service.json", R"({"state": "running"})");
    return home;
}

std::string pictureOf(const QVString& command)
{
    return readText(fs::u8path(VELMORA_LOCAL_IMAGES_FOLDER) / (toUtf8(command) + ".png"));
}

TEST(LocalCommandImages, AreTheServicesPictures)
{
    const TemporaryFolder temporary;
    const EnvironmentVariable variable("TESSAPORT_HOME", makeHome(temporary.path() / "home").u8string());
    Tessaport::ClrRuntime::ofProcess().setBridgeFolder(fs::u8path(VELMORA_BRIDGE_FOLDER));
    setRuntimeOptions({fs::u8path(VELMORA_LOCAL_SERVICE_FOLDER), {}});
    QvNativeTessaportAPI tessaport;
    const QVBuffer<Item> items = tessaport.getFolderContents(tessaport.getDrives()[0]->root);
    ASSERT_EQ(items.GetSize(), 1U);
    CommandContext context;
    context.itemId = items[0]->id;
    context.itemIds.Append(items[0]->id);

    const QVBuffer<Command> commands = tessaport.getCommands(context);

    ASSERT_EQ(commands.GetSize(), 4U);
    for (const Command& command : commands) {
        const std::vector<std::uint8_t> image = commandImage(command);
        EXPECT_FALSE(image.empty()) << command.id.c_str();
        EXPECT_EQ(image.size(), command.image.count) << command.id.c_str();
        EXPECT_EQ(std::string(image.begin(), image.end()), pictureOf(command.id)) << command.id.c_str();
    }
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
