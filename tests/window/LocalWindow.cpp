#include "tests/window/LocalWindow.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <unistd.h>

#include <velmora/native/RequestQueue.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/support/ChildProcess.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

// .NET sees the environment as it was when it started, so all tests of a process use one home.
const fs::path& homeOfProcess()
{
    static const fs::path home = [] {
        const fs::path path = fs::temp_directory_path() / fs::u8path("velmora-вікно-" + std::to_string(getpid()));
        setenv("TESSAPORT_HOME", path.c_str(), 1);
        TessaportAPI::setRuntimeOptions({VELMORA_LOCAL_SERVICE_FOLDER, {}});
        return path;
    }();
    return home;
}

} // namespace

DemoHome::DemoHome() : home(homeOfProcess())
{
    TestSupport::ChildProgram tool;
    tool.program = VELMORA_TOOL;
    tool.arguments = {"demo", "--home", home.u8string()};
    const auto result = TestSupport::run(tool);
    if (!result.exitedWith(0))
        throw std::runtime_error("No demo drives: " + result.description());
}

DemoHome::~DemoHome()
{
    // Requests of the window that have not ended write into the home.
    TessaportAPI::RequestQueue last;
    last.ask([](TessaportAPI::QvNativeTessaportAPI&) {}).wait_for(std::chrono::minutes(1));
    std::error_code ignored;
    fs::remove_all(home, ignored);
}

fs::path DemoHome::here(const std::string& file) const { return home / "drives/harbour/workspace" / fs::u8path(file); }

fs::path DemoHome::onServer(const std::string& file) const { return home / "drives/harbour/server" / fs::u8path(file); }

void DemoHome::setState(const std::string& state) const
{
    writeText(home / "service.json.tmp", R"({"state": ")" + state + R"("})");
    fs::rename(home / "service.json.tmp", home / "service.json");
}

void LocalWindow::openFirstDrive()
{
    openWindow();
    ASSERT_TRUE(waitForState("README.txt", "In sync")) << noticeText().toStdString();
}

std::string readText(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeText(const fs::path& file, const std::string& text) { std::ofstream(file, std::ios::binary) << text; }

} // namespace Quorvex::Velmora::WindowTest
