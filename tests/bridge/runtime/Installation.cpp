#include "Installation.h"

#include <fstream>
#include <sstream>

namespace Quorvex::Velmora::TestSupport
{

namespace fs = std::filesystem;

fs::path vendorFolder(std::string_view variant) { return fs::path(VELMORA_VENDORS_FOLDER) / variant; }

fs::path vendorBridgeFolder() { return VELMORA_VENDOR_BRIDGE_FOLDER; }

fs::path hostFile(std::string_view name) { return fs::path(VELMORA_HOSTS_FOLDER) / name; }

ChildResult runHost(std::string_view name, const std::vector<std::string>& arguments, std::chrono::seconds timeLimit)
{
    ChildProgram program;
    program.program = hostFile(name);
    program.arguments = arguments;
    program.timeLimit = timeLimit;
    return run(program);
}

fs::path dotnetRoot() { return VELMORA_DOTNET_ROOT; }

void writeText(const fs::path& file, std::string_view text)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

Installation::Installation()
{
    fs::create_directories(bridge());
    fs::copy_file(VELMORA_LIBRARY_FILE, library() / VELMORA_LIBRARY_NAME);
    fs::copy(VELMORA_BRIDGE_FOLDER, bridge());
    environment["LD_LIBRARY_PATH"] = library().string();
}

fs::path Installation::copyVendor(std::string_view variant, std::string_view name) const
{
    fs::path copy = root() / name;
    fs::copy(vendorFolder(variant), copy);
    return copy;
}

ChildResult Installation::connect(const std::vector<std::string>& steps) const
{
    ChildProgram program;
    program.program = hostFile("velmora_connect_host");
    program.arguments = steps;
    program.environment = environment;
    program.currentFolder = currentFolder;
    return run(program);
}

std::vector<std::string> linesOf(const ChildResult& result)
{
    std::vector<std::string> lines;
    std::istringstream stream(result.output);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace Quorvex::Velmora::TestSupport
