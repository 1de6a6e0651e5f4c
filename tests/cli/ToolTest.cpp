#include "ToolTest.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

fs::path newFolder()
{
    std::string name = (fs::temp_directory_path() / "tessaport-cli-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("cannot make a folder in " + fs::temp_directory_path().string());
    return fs::canonical(name);
}

} // namespace

ToolTest::ToolTest() : folder(newFolder()), home(folder / "home") {}

ToolTest::~ToolTest()
{
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

void ToolTest::makeDemo() { expectOk({"demo"}); }

Finished ToolTest::run(std::vector<std::string> arguments)
{
    Start start;
    start.arguments = std::move(arguments);
    return run(std::move(start));
}

Finished ToolTest::run(Start start)
{
    start.environment.try_emplace("TESSAPORT_HOME", home.string());
    return runTool(start);
}

std::string ToolTest::expectOk(std::vector<std::string> arguments)
{
    const Finished finished = run(std::move(arguments));
    EXPECT_EQ(finished.exitCode, 0) << "signal " << finished.signal << '\n' << finished.output << finished.errors;
    EXPECT_EQ(finished.errors, "");
    return finished.output;
}

nlohmann::json ToolTest::expectJson(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "--json");
    const std::string output = expectOk(std::move(arguments));
    auto json = nlohmann::json::parse(output, nullptr, false);
    EXPECT_FALSE(json.is_discarded()) << output;
    return json;
}

fs::path ToolTest::workspace(const std::string& drive) const { return home / "drives" / drive / "workspace"; }

fs::path ToolTest::server(const std::string& drive) const { return home / "drives" / drive / "server"; }

std::string ToolTest::readme() const { return (workspace("harbour") / "README.txt").string(); }

void writeFile(const fs::path& file, const std::string& content)
{
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
}

std::string readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string withBackslashes(std::string path)
{
    for (char& c : path)
        c = c == '/' ? '\\' : c;
    return path;
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace Quorvex::Velmora::ToolTest
