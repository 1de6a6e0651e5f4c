#include "tests/bridge/runtime/Installation.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TestSupport
{

namespace fs = std::filesystem;

namespace
{

fs::path hostProgram(std::string_view name) { return hostFile(std::string(name) + VELMORA_PROGRAM_SUFFIX); }

// For programs that are not in the folder of the library.
void findLibraryIn(const fs::path& folder, std::map<std::string, std::string>& environment)
{
#ifdef _WIN32
    const wchar_t* const others = _wgetenv(L"PATH");
    environment["PATH"] = folder.u8string() + ';' + Common::Unicode::toUtf8(others == nullptr ? L"" : others);
#else
    environment["LD_LIBRARY_PATH"] = folder.u8string();
#endif
}

} // namespace

fs::path native(const char* path) { return fs::absolute(fs::u8path(path)).make_preferred(); }

fs::path vendorFolder(std::string_view variant) { return native(VELMORA_VENDORS_FOLDER) / variant; }

fs::path vendorBridgeFolder() { return native(VELMORA_VENDOR_BRIDGE_FOLDER); }

fs::path libraryOfBuild() { return native(VELMORA_LIBRARY_FILE); }

fs::path bridgeOfBuild() { return native(VELMORA_BRIDGE_FOLDER); }

fs::path hostFile(std::string_view name) { return native(VELMORA_HOSTS_FOLDER) / name; }

ChildResult runHost(std::string_view name, const std::vector<std::string>& arguments, std::chrono::seconds timeLimit,
    std::map<std::string, std::string> environment)
{
    ChildProgram program;
    program.environment = std::move(environment);
    program.program = hostProgram(name);
    program.arguments = arguments;
    program.timeLimit = timeLimit;
    findLibraryIn(libraryOfBuild().parent_path(), program.environment);
    return run(program);
}

ChildResult runManagedHost(
    const fs::path& apiFolder, const std::vector<std::string>& loadedBefore, const fs::path& libraryFolder)
{
    ChildProgram program;
    program.program = native(VELMORA_MANAGED_HOST_FOLDER) / (std::string("ManagedHost") + VELMORA_PROGRAM_SUFFIX);
    program.arguments = {hostFile(VELMORA_PLUGIN_NAME).u8string(), apiFolder.u8string()};
    program.arguments.insert(program.arguments.end(), loadedBefore.begin(), loadedBefore.end());
    program.environment["DOTNET_ROOT"] = dotnetRoot().u8string();
    findLibraryIn(libraryFolder, program.environment);
    return run(program);
}

fs::path dotnetRoot() { return native(VELMORA_DOTNET_ROOT); }

void writeText(const fs::path& file, std::string_view text)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

Installation::Installation()
{
    fs::create_directories(bridge());
    fs::copy_file(libraryOfBuild(), library() / VELMORA_LIBRARY_NAME);
    fs::copy(bridgeOfBuild(), bridge());
    takeLibraryFrom(library());
}

void Installation::takeLibraryFrom(const fs::path& folder) { findLibraryIn(folder, environment); }

void Installation::replaceBridge(const fs::path& folder) const
{
    for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        fs::remove(bridge() / file.path().filename());
        fs::copy_file(file.path(), bridge() / file.path().filename());
    }
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
    program.program = hostProgram("velmora_connect_host");
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
