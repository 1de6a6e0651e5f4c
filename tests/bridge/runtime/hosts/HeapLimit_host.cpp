// A host whose .NET may use little memory: DOTNET_GCHeapHardLimit says how much.
//   HeapLimit_host BRIDGE_FOLDER API_FOLDER PATH STEP MOST
// Looks PATH up, STEP times in one request, twice STEP times in the next, and so on up to MOST, with a small request
// after each, and writes for each whether it was answered. Then writes how many managed objects are still kept alive.
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>

#include <velmora/api/Interop.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"
#include "tests/bridge/runtime/hosts/HostText.h"

using namespace Quorvex::Velmora;
using TessaportAPI::QvNativeTessaportAPI;

namespace
{

void lookUp(QvNativeTessaportAPI& connection, const Common::QVString& path, unsigned long step, unsigned long most)
{
    TessaportAPI::QVBuffer<Common::QVString> paths;
    while (paths.GetSize() < most) {
        for (unsigned long i = 0; i < step; ++i)
            paths.Append(path);
        TestHosts::report([&] {
            const auto found = connection.getItemsByWorkspacePaths(paths);
            std::cout << (found.GetSize() == paths.GetSize() ? "found" : "incomplete") << std::endl;
        });
        TestHosts::report([&] { std::cout << "drives " << connection.getDrives().GetSize() << std::endl; });
    }
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = TestHosts::argumentsOf(count, values);
    if (arguments.size() != 5)
        return 2;
    auto& runtime = Tessaport::ClrRuntime::ofProcess();
    runtime.setBridgeFolder(std::filesystem::u8path(arguments[0]));
    runtime.setOptions({std::filesystem::u8path(arguments[1]), {}});
    TestHosts::report([&] {
        QvNativeTessaportAPI connection;
        const Common::QVString path = TessaportAPI::toQVString(arguments[2]);
        lookUp(connection, path, std::stoul(arguments[3]), std::stoul(arguments[4]));
    });
    QvNativeTessaportAPI::clearCachedItems();
    std::cout << "kept " << runtime.entryPoints().countHandles() << std::endl;
    return 7;
}
