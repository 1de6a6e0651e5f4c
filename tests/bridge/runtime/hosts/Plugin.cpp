// A part of a host that comes and goes with its library.
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>

using namespace Quorvex::Velmora::TessaportAPI;

extern "C" VELMORA_API int countItems(const char* apiFolder);

/// Sets the options when a folder is given. Returns the number of items of the first drive, or -1.
int countItems(const char* apiFolder)
{
    try {
        if (apiFolder != nullptr)
            setRuntimeOptions({apiFolder, {}});
        QvNativeTessaportAPI connection;
        const auto drives = connection.getDrives();
        return static_cast<int>(connection.getFolderContents(drives[0]->root).GetSize());
    } catch (const std::exception&) {
        return -1;
    }
}
