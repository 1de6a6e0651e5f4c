#include "tests/cli/ToolTest.h"

#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{

#ifdef _WIN32
const std::map<std::string, std::string> CLocale;
#else
const std::map<std::string, std::string> CLocale{{"LC_ALL", "C"}, {"LANG", ""}};
#endif

ToolTest::ToolTest() : folder(fs::canonical(temporary.path())), home(folder / "home") {}

void ToolTest::makeDemo() { expectOk({"demo"}); }

ChildResult ToolTest::run(std::vector<std::string> arguments)
{
    ChildProgram program;
    program.arguments = std::move(arguments);
    return runProgram(std::move(program));
}

ChildResult ToolTest::runProgram(ChildProgram program)
{
    complete(program);
    return TestSupport::run(program);
}

ChildResult ToolTest::runOnTerminal(ChildProgram program)
{
    complete(program);
    return TestSupport::runOnTerminal(program);
}

void ToolTest::complete(ChildProgram& program) const
{
    if (program.program.empty())
        program.program = fs::absolute(TESSAPORT_TOOL).make_preferred();
    program.environment.try_emplace("TESSAPORT_HOME", text(home));
    program.foldLineEnds = false;
}

std::string ToolTest::expectOk(std::vector<std::string> arguments)
{
    const ChildResult finished = run(std::move(arguments));
    EXPECT_TRUE(finished.exitedWith(0)) << finished.description();
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

std::string ToolTest::readme() const { return text(workspace("harbour") / "README.txt"); }

void writeFile(const fs::path& file, const std::string& content)
{
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << content;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + text(file));
}

std::string readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + text(file));
    return {std::istreambuf_iterator<char>(stream), {}};
}

fs::path toPath(const std::string& text) { return fs::u8path(text); }

std::string text(const fs::path& path) { return fs::path(path).make_preferred().u8string(); }

std::string withBackslashes(std::string path)
{
    for (char& c : path)
        c = c == '/' ? '\\' : c;
    return path;
}

std::string localTime(std::time_t seconds)
{
    std::ostringstream text;
    text << std::put_time(std::localtime(&seconds), "%Y-%m-%d %H:%M:%S");
    return text.str();
}

std::string withNativeSlashes(std::string text)
{
    for (char& c : text)
        c = c == '/' ? static_cast<char>(fs::path::preferred_separator) : c;
    return text;
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
