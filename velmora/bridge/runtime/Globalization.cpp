#include "velmora/bridge/runtime/Globalization.h"

#if !defined(_WIN32) && !defined(__APPLE__)

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <strings.h>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/runtime/NativeLibrary.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// Looks for an ICU of any version. Where there is none, the runtime itself would try two thousand names: 30 ms.
bool anyIcuIsInstalled()
{
    constexpr int Newest = 100;
    constexpr int Oldest = 50;
    for (int version = Newest; version >= Oldest; --version) {
        if (NativeLibrary::open("libicuuc.so." + std::to_string(version)).isOpen())
            return true;
    }
    return NativeLibrary::open("libicuuc.so").isOpen();
}

// The runtime's own library is asked, because it alone knows which versions of ICU it takes. Little time is lost: the
// runtime needs the same libraries right after.
bool runtimeTakesIcu(const std::filesystem::path& globalizationLibrary)
{
    const NativeLibrary library = NativeLibrary::open(globalizationLibrary);
    const auto loadIcu = library.symbol<std::int32_t (*)()>("GlobalizationNative_LoadICU");
    return loadIcu == nullptr || loadIcu() != 0;
}

// The first such library in the folders, which colons separate; empty when there is none.
std::filesystem::path findGlobalizationLibrary(std::string_view folders)
{
    while (!folders.empty()) {
        const std::size_t end = folders.find(':');
        std::filesystem::path path =
            std::filesystem::path(folders.substr(0, end)) / "libSystem.Globalization.Native.so";
        std::error_code error;
        if (std::filesystem::is_regular_file(path, error))
            return path;
        folders.remove_prefix(end == std::string_view::npos ? folders.size() : end + 1);
    }
    return {};
}

// .NET heeds this variable of its own before the property that is set here, and then ends the process.
void checkThatNobodyForbidsInvariantMode()
{
    const char* const value = std::getenv("DOTNET_SYSTEM_GLOBALIZATION_INVARIANT");
    if (value == nullptr || (std::strcmp(value, "0") != 0 && strcasecmp(value, "false") != 0))
        return;
    const std::wstring message =
        L".NET could not be started: the ICU libraries (libicuuc, libicui18n) were looked for in the system's library "
        L"folders and are not there, and the environment variable DOTNET_SYSTEM_GLOBALIZATION_INVARIANT forbids to do "
        L"without them. Install libicu (icu-libs), or remove that variable.";
    throw TessaportAPI::ApiException(message.c_str(), message.size());
}

} // namespace

void allowMissingIcu(hostfxr_handle context, const RuntimeProperties& properties)
{
    const char_t* folders = nullptr;
    if (properties.get == nullptr || properties.set == nullptr ||
        properties.get(context, "NATIVE_DLL_SEARCH_DIRECTORIES", &folders) != 0 || folders == nullptr)
        return;
    const std::filesystem::path library = findGlobalizationLibrary(folders);
    if (library.empty() || (anyIcuIsInstalled() && runtimeTakesIcu(library)))
        return;
    checkThatNobodyForbidsInvariantMode();
    properties.set(context, "System.Globalization.Invariant", "true");
    // Cultures by name, as formatting code asks for them, then are empty ones and not errors.
    properties.set(context, "System.Globalization.PredefinedCulturesOnly", "false");
}

} // namespace Quorvex::Velmora::Tessaport

#else

namespace Quorvex::Velmora::Tessaport
{

// The system has what .NET needs.
void allowMissingIcu(hostfxr_handle, const RuntimeProperties&) {}

} // namespace Quorvex::Velmora::Tessaport

#endif
