// A host that unloads its plugin, and with it the library, and loads both again. Exits with 7 when both uses succeed.
//   Unload_host PLUGIN API_FOLDER LIBRARY
#include <filesystem>
#include <string>
#include <vector>

#include "tests/bridge/runtime/hosts/DynamicLibrary.h"
#include "tests/bridge/runtime/hosts/HostArguments.h"

using Quorvex::Velmora::TestHosts::DynamicLibrary;
namespace fs = std::filesystem;

namespace
{

int countItemsOf(const fs::path& plugin, const char* apiFolder)
{
    DynamicLibrary library(plugin);
    const auto countItems = library.symbol<int (*)(const char*)>("countItems");
    const int count = countItems == nullptr ? -1 : countItems(apiFolder);
    return library.unload() ? count : -1;
}

bool loadsAndUnloads(const fs::path& path) { return DynamicLibrary(path).unload(); }

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = Quorvex::Velmora::TestHosts::argumentsOf(count, values);
    if (arguments.size() != 3)
        return 2;
    const fs::path plugin = fs::u8path(arguments[0]);
    const fs::path library = fs::u8path(arguments[2]);
    if (!loadsAndUnloads(library))
        return 3;
    if (countItemsOf(plugin, arguments[1].c_str()) != 5000)
        return 4;
    if (!loadsAndUnloads(library))
        return 5;
    return countItemsOf(plugin, nullptr) == 5000 ? 7 : 6;
}
