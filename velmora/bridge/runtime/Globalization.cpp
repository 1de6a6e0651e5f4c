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

// Looks for ICU of any version. Without one, the runtime itself would try two thousand names, which takes 30 ms.
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

// Asks the runtime's own library, because only it knows which versions of ICU it takes. This costs little time: the
// runtime loads the same libraries right afterwards.
bool runtimeTakesIcu(const std::filesystem::path& globalizationLibrary)
{
    const NativeLibrary library = NativeLibrary::open(globalizationLibrary);
    const auto loadIcu = library.symbol<std::int32_t (*)()>("GlobalizationNative_LoadICU");
    return loadIcu == nullptr || loadIcu() != 0;
}

// Returns the first such library in the folders, which colons separate; empty if no folder has one.
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

// This variable of .NET overrides the property that is set here, and .NET then ends the process.
void checkThatInvariantModeIsAllowed()
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
    checkThatInvariantModeIsAllowed();
    properties.set(context, "System.Globalization.Invariant", "true");
    // Formatting code that asks for a culture by name then gets the invariant one instead of an error.
    properties.set(context, "System.Globalization.PredefinedCulturesOnly", "false");
}

} // namespace Quorvex::Velmora::Tessaport

#else

namespace Quorvex::Velmora::Tessaport
{

// These systems have what .NET needs.
void allowMissingIcu(hostfxr_handle, const RuntimeProperties&) {}

} // namespace Quorvex::Velmora::Tessaport

#endif
