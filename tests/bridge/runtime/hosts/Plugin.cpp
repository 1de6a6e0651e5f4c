// A plugin, with which a host loads and unloads this library.
#include <filesystem>
#include <iostream>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostText.h"

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::TessaportAPI;

#ifdef _WIN32
#define PLUGIN_API __declspec(dllexport)
#else
#define PLUGIN_API __attribute__((visibility("default")))
#endif

extern "C" PLUGIN_API int countItems(const char* apiFolder);
extern "C" PLUGIN_API int reportConnection(const char* apiFolder);

/// Sets the options when a folder is given, in UTF-8. Returns the number of items of the first drive, or -1.
int countItems(const char* apiFolder)
{
    try {
        if (apiFolder != nullptr)
            setRuntimeOptions({std::filesystem::u8path(apiFolder), {}});
        QvNativeTessaportAPI connection;
        const auto drives = connection.getDrives();
        return static_cast<int>(connection.getFolderContents(drives[0]->root).GetSize());
    } catch (const std::exception&) {
        return -1;
    }
}

/// Connects with the folder, in UTF-8, and writes one line: "connected <version>" or what failed. Returns 7.
int reportConnection(const char* apiFolder)
{
    setRuntimeOptions({std::filesystem::u8path(apiFolder), {}});
    TestHosts::report([] {
        QvNativeTessaportAPI connection;
        std::cout << "connected " << connection.getVersion().c_str() << std::endl;
    });
    return 7;
}
