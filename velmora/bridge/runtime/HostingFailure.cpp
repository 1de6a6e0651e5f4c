#include "velmora/bridge/runtime/HostingFailure.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <velmora/platform/NativePath.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

struct KnownFailure {
    std::uint32_t code;
    const wchar_t* meaning;
    const wchar_t* remedy;
};

constexpr const wchar_t* InstallDotnet =
    L"Install the .NET runtime 8.0 or newer, or set RuntimeOptions::dotnetRoot to the folder of an installation.";
constexpr const wchar_t* RepairDotnet = L"Repair or reinstall .NET.";
constexpr const wchar_t* RepairDotnetOfArchitecture =
    L"Repair or reinstall .NET for the processor architecture of this program.";
constexpr const wchar_t* RepairShippedDotnet = L"Reinstall this library with its dotnet folder, remove that folder to "
                                               L"use the .NET runtime of this machine, or set "
                                               L"RuntimeOptions::dotnetRoot to the folder of an installation.";
constexpr const wchar_t* RepairBridge = L"Reinstall this library with its bridge folder.";
constexpr const wchar_t* RestartProcess =
    L"Restart this process once the cause is gone; it cannot start .NET any more.";
#ifdef _WIN32
constexpr const wchar_t* LiftLimits =
    L"Often a limit on memory (of a job, or set for .NET) is the cause. Restart this process once the cause is gone; "
    L"it cannot start .NET any more.";
#else
constexpr const wchar_t* LiftLimits =
    L"Often a limit on memory or open files (ulimit) is the cause. Restart this process once the cause is gone; it "
    L"cannot start .NET any more.";
#endif
constexpr const wchar_t* OtherHost =
    L"Another part of this process has started .NET in a way that cannot serve this library; start it here first, or "
    L"with a framework of version 8.0 or newer.";

// The status codes of .NET's native hosting, as its documentation lists them.
constexpr KnownFailure KnownFailures[] = {
    {0x80008081, L"an argument of a hosting function was invalid", RepairBridge},
    {0x80008082, L"a library of .NET could not be loaded", RepairDotnetOfArchitecture},
    {0x80008083, L"no .NET installation was found", InstallDotnet},
    {0x80008084, L"a library of .NET lacks a function that is needed", RepairDotnet},
    {0x80008085, L"the folder of .NET's own host could not be found", RepairDotnet},
    {0x80008087, L"the .NET SDK was looked for and not found", InstallDotnet},
    {0x80008088, L"the runtime library hostpolicy reported an error", RepairDotnet},
    {0x80008089, L"the .NET runtime itself failed to start and wrote the cause to standard error", LiftLimits},
    {0x8000808b, L"the executable of the process could not be determined", RepairDotnet},
    {0x8000808c, L"a list of the runtime's libraries could not be read", RepairDotnet},
    {0x8000808d, L"the bridge's folder could not be read", RepairBridge},
    {0x8000808e, L"the .NET runtime's core library was not found", RepairDotnet},
    {0x8000808f, L"the .NET runtime failed to unload", RepairDotnet},
    {0x80008091, L"the application's executable is not bound to one", RepairBridge},
    {0x80008092, L"the .NET host library is missing", InstallDotnet},
    {0x80008093, L"the bridge's .runtimeconfig.json is invalid or asks for a self-contained runtime", RepairBridge},
    {0x80008094, L"an argument of .NET's command line was invalid", RepairBridge},
    {0x80008095, L"a .deps.json of .NET or of the bridge is invalid", RepairBridge},
    {0x80008096, L"no .NET framework of a version that fits was found", InstallDotnet},
    {0x80008097, L"the application could not be resolved", RepairBridge},
    {0x80008098, L"a buffer of the host was too small", RepairDotnet},
    {0x80008099, L"the .NET SDK could not be resolved", InstallDotnet},
    {0x8000809a, L"the framework is not compatible with the bridge's configuration", InstallDotnet},
    {0x8000809b, L"the framework is not compatible; the host would have had to try again", InstallDotnet},
    {0x8000809c, L"the application's executable is a bundle that cannot be read", RepairBridge},
    {0x8000809d, L"a file could not be unpacked", RepairDotnet},
    {0x8000809e, L"a file could not be written", RepairDotnet},
    {0x8000809f, L"the bundle header is invalid", RepairBridge},
    {0x800080a0, L"the bundle could not be opened", RepairBridge},
    {0x800080a1, L"a property of the runtime was not found", RepairDotnet},
    {0x800080a2, L"the .NET host is too old for this library", InstallDotnet},
    {0x800080a3, L".NET is in a state in which it cannot be started", RestartProcess},
    {0x800080a4, L"a property of the runtime was not found", RepairDotnet},
    {0x800080a5, L"a runtime with an incompatible configuration runs in this process already", OtherHost},
    {0x800080a6, L"the .NET host does not know how to start the bridge", InstallDotnet},
    {0x800080a7, L"the hosting scenario is not supported", OtherHost},
};

// For codes that are not in the table.
constexpr KnownFailure UnknownHostingFailure = {0, L"an unexpected failure", RepairDotnet};
constexpr KnownFailure BridgeFailure = {0, L"a file of the bridge could not be loaded", RepairBridge};

const KnownFailure& failureOf(std::uint32_t code)
{
    const auto* const known = std::find_if(std::begin(KnownFailures), std::end(KnownFailures),
        [code](const KnownFailure& failure) { return failure.code == code; });
    if (known != std::end(KnownFailures))
        return *known;
    // Other codes come from the runtime when it loads the bridge.
    const bool isHostingCode = (code & 0xFFFFFF00) == 0x80008000;
    return isHostingCode ? UnknownHostingFailure : BridgeFailure;
}

std::wstring hexadecimal(std::int32_t code)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<std::uint32_t>(code));
    return Common::Unicode::fromUtf8(text);
}

const wchar_t* remedyFor(const KnownFailure& failure, const DotnetRoot& dotnet)
{
    const bool isAboutDotnet = failure.remedy == InstallDotnet || failure.remedy == RepairDotnet ||
                               failure.remedy == RepairDotnetOfArchitecture;
    return isAboutDotnet && dotnet.isShipped ? RepairShippedDotnet : failure.remedy;
}

std::wstring searched(const DotnetRoot& dotnet)
{
    if (!dotnet.folder.empty())
        return L"in '" + Common::wideText(dotnet.folder) + L"'";
#ifdef _WIN32
    return L"in DOTNET_ROOT, in the registered location and in 'C:\\Program Files\\dotnet'";
#else
    return L"in DOTNET_ROOT, in the location registered in '/etc/dotnet' and in '/usr/share/dotnet' or "
           L"'/usr/lib/dotnet'";
#endif
}

} // namespace

std::wstring describeHostingFailure(
    const HostingStatus& status, const DotnetRoot& dotnet, const std::filesystem::path& bridgeFolder)
{
    const KnownFailure& failure = failureOf(static_cast<std::uint32_t>(status.code));
    std::wstring message = L".NET could not be started: ";
    message += failure.meaning;
    message += L" (" + hexadecimal(status.code) + L"). .NET was looked for " + searched(dotnet);
    message += L", the bridge in '" + Common::wideText(bridgeFolder) + L"'. ";
    message += remedyFor(failure, dotnet);
    if (!status.details.empty())
        message += L" .NET's own words: " + Common::Unicode::fromUtf8(status.details);
    return message;
}

} // namespace Quorvex::Velmora::Tessaport
